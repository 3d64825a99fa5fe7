# Fuzz target of the line readers of clsUniFile: arbitrary bytes as a file, read as lines in each
# encoding with and without the cache, plus marks and length-prefixed strings.
tc_add_fuzzer(fuzz_files_lines ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_files_lines.cpp DEPS tc_text)
