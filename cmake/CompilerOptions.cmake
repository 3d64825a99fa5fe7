# Warnings as errors on every compiler, sanitizers for the native build, static Windows runtime.

function(tc_target_options target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Werror -Wno-missing-field-initializers)
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  if(WIN32)
    # UNICODE, NOMINMAX and WIN32_LEAN_AND_MEAN come from src/platform/win32/WinApi.h only.
    target_compile_definitions(${target} PUBLIC _WIN32_WINNT=0x0601)
  endif()
endfunction()

if(TC_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

if(WIN32)
  add_link_options(-static -static-libgcc -static-libstdc++)
endif()

# x86: SSE2 arithmetic instead of the x87 unit, whose 80-bit intermediates round blends and scalings
# differently from x64 (pictures a step off here and there). Every processor that runs a current
# 32-bit Windows has SSE2. Set here rather than in the toolchain file so that existing trees get it.
# -DTC_X86_X87=ON builds with the x87 unit instead, to see the difference in the pixel tests.
if(WIN32 AND CMAKE_SYSTEM_PROCESSOR STREQUAL "x86" AND NOT TC_X86_X87)
  add_compile_options(-msse2 -mfpmath=sse)
endif()

# A subsystem library from the .cpp files of a folder; an interface library while the folder has none.
# The files matching any of the patterns, re-read at every build so that new files join in.
function(tc_glob out)
  set(files "")
  foreach(pattern IN LISTS ARGN)
    file(GLOB found CONFIGURE_DEPENDS ${pattern})
    list(APPEND files ${found})
  endforeach()
  set(${out} ${files} PARENT_SCOPE)
endfunction()

function(tc_add_library name)
  cmake_parse_arguments(ARG "" "" "GLOB;DEPS" ${ARGN})
  tc_glob(sources ${ARG_GLOB})
  if(sources)
    add_library(${name} STATIC ${sources})
    tc_target_options(${name})
    target_link_libraries(${name} PUBLIC ${ARG_DEPS})
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} INTERFACE ${ARG_DEPS})
  endif()
endfunction()
