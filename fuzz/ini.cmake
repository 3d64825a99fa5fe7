# Fuzz target of the INI parser: clsFileIniEx.LoadFromString with every comment and separator kind.
tc_add_fuzzer(fuzz_ini ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_ini.cpp DEPS tc_text)
