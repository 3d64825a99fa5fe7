# Fuzz targets of the text core: the UTF-8 decoder, the Base64 decoder, the hex envelope and
# large-number arithmetic checked against its own identities.
tc_add_fuzzer(fuzz_text_utf8 ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_text_utf8.cpp DEPS tc_text)
tc_add_fuzzer(fuzz_text_base64 ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_text_base64.cpp DEPS tc_text)
tc_add_fuzzer(fuzz_text_hex ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_text_hex.cpp DEPS tc_text)
tc_add_fuzzer(fuzz_text_largenumber ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_text_largenumber.cpp DEPS tc_text)
# The fast (SSE2) UTF-8 loops against the portable ones on arbitrary input.
tc_add_fuzzer(fuzz_text_utf8_paths ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_text_utf8_paths.cpp DEPS tc_text)
