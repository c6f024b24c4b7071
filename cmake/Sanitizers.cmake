option(VELMORA_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
if(VELMORA_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  # Instrumented code confuses GCC's flow analysis: it reports members of variants that no path reads.
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  add_link_options(-fsanitize=address,undefined)
endif()
option(VELMORA_TIDY "Run clang-tidy on every source while compiling" OFF)
if(VELMORA_TIDY)
  find_program(CLANG_TIDY_PROGRAM clang-tidy REQUIRED)
  set(CMAKE_CXX_CLANG_TIDY "${CLANG_TIDY_PROGRAM}" --quiet)
  # What the toolkit's tools write is nobody's to mend: below the build folder one check is left, which finds nothing.
  file(WRITE "${CMAKE_BINARY_DIR}/.clang-tidy" "Checks: '-*,misc-definitions-in-headers'\n")
endif()
