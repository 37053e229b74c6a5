#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace foundation {

// Text encodings by their classic numbers: 1 ASCII, 4 UTF-8 (the default everywhere),
// 5 Latin-1, 10 UTF-16.
inline constexpr std::uint64_t kUTF8Encoding = 4;

// Decodes bytes strictly: nullopt, with a reason, for an unknown encoding or invalid text. A
// UTF-8 byte-order mark is skipped; empty input gives an empty (not absent) string.
std::optional<QString> decodeText(const QByteArray& bytes, std::uint64_t encoding,
                                  QString* error = nullptr);

} // namespace foundation
