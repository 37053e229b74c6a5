# One INTERFACE target that every project target links: warnings, Qt strictness and the
# sanitizer/fuzzing instrumentation, so no target can forget one of them.
add_library(versewick_options INTERFACE)
target_compile_options(versewick_options INTERFACE -Wall -Wextra -Wpedantic)
target_compile_definitions(versewick_options INTERFACE
  QT_NO_CAST_TO_ASCII
  QT_NO_CAST_FROM_BYTEARRAY
  QT_NO_URL_CAST_FROM_STRING
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
  QT_NO_FOREACH)

if(VERSEWICK_SANITIZE)
  target_compile_options(versewick_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(versewick_options INTERFACE -fsanitize=address,undefined)
endif()

if(VERSEWICK_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "VERSEWICK_FUZZ needs clang (configure with CXX=clang++)")
  endif()
  # Everything is instrumented for coverage; only the fuzz executables link libFuzzer's main.
  target_compile_options(versewick_options INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer)
  target_link_options(versewick_options INTERFACE -fsanitize=address,undefined)
endif()
