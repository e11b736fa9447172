# Compiler, linker and sanitizer settings that hold for every target of the project.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

option(VELMOOR_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)

option(VELMOOR_SANITIZE_THREAD "Build with the thread sanitizer" OFF)
option(VELMOOR_FUZZ "Build the fuzzing targets for libFuzzer; needs clang" OFF)

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)

# What holds against a fault that is not found yet; scripts/check-binaries looks whether it is in the
# programs that are shipped.
add_compile_options(-fstack-protector-strong)
add_compile_definitions(_GLIBCXX_ASSERTIONS)
if(WIN32)
  # The functions of Windows 10, by their wide names, and no words of its own for ordinary ones.
  add_compile_definitions(_WIN32_WINNT=0x0A00 WIN32_LEAN_AND_MEAN NOMINMAX UNICODE _UNICODE)
  # What comes with the compiler is in the programs.
  add_link_options(-static -fstack-protector-strong)
else()
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  include(CheckPIESupported)
  check_pie_supported(LANGUAGES CXX)
  add_link_options(-Wl,-z,relro,-z,now)
endif()
if(NOT WIN32 AND CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|i[3-6]86)$")
  add_compile_options(-fcf-protection)
endif()
# Only an optimised build has the checked calls, and the sanitizers have their own.
if(NOT WIN32 AND NOT VELMOOR_SANITIZE AND NOT VELMOOR_SANITIZE_THREAD)
  add_compile_options($<$<CONFIG:Release>:-U_FORTIFY_SOURCE>
                      $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=3>)
endif()

if(VELMOOR_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer
                      -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

if(VELMOOR_SANITIZE_THREAD)
  add_compile_options(-fsanitize=thread)
  add_link_options(-fsanitize=thread)
endif()
if(VELMOOR_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

find_program(VELMOOR_CCACHE ccache)
if(VELMOOR_CCACHE)
  # The precompiled Qt header is cached only when ccache is told what it may overlook.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      ${VELMOOR_CCACHE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-fpch-preprocess)
  endif()
endif()
find_program(VELMOOR_MOLD mold)
if(VELMOOR_MOLD AND NOT WIN32)
  add_link_options(-fuse-ld=mold)
endif()
