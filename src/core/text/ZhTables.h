#pragma once

// The parallel simplified, traditional and "Mars" character tables, UTF-8, 4792 characters
// each: position i is the same character in the three scripts.
namespace zh {
const char* simplifiedTable();
const char* traditionalTable();
const char* marsTable();
} // namespace zh
