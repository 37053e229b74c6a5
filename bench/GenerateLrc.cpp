// Writes the large benchmark lyric (the same bytes every time) to a file:
//   build/bin/lrc_generate OUT.lrc [TIMED_LINES]
#include "LargeLrc.h"

#include <cstdio>
#include <cstdlib>
#include <string>

int main(int argc, char** argv)
{
    if (argc < 2 || argc > 3) {
        std::fprintf(stderr, "usage: lrc_generate OUT.lrc [TIMED_LINES]\n");
        return 2;
    }
    const int lines = argc == 3 ? std::atoi(argv[2]) : bench::kLargeTimedLines;
    if (lines <= 0) {
        std::fprintf(stderr, "lrc_generate: TIMED_LINES must be a positive number\n");
        return 2;
    }
    const std::string text = bench::largeLrc(lines);
    std::FILE* file = std::fopen(argv[1], "wb");
    if (!file || std::fwrite(text.data(), 1, text.size(), file) != text.size() ||
        std::fclose(file) != 0) {
        std::perror(argv[1]);
        return 1;
    }
    return 0;
}
