# Language level, warnings and sanitizers for every target of the tree.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(ORVANE_WARNINGS_AS_ERRORS)
  add_compile_options(-Werror)
endif()

# What is installed is hardened as Debian's own packages are.
include(CheckPIESupported)
check_pie_supported()
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  add_compile_options(-fstack-protector-strong -fstack-clash-protection -Wformat -Werror=format-security)
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
    add_compile_options(-fcf-protection)
  endif()
  add_compile_definitions(_FORTIFY_SOURCE=2)
  add_link_options(-Wl,-z,relro -Wl,-z,now)
  # It tells nothing of the machine that built it.
  add_compile_options(-ffile-prefix-map=${CMAKE_SOURCE_DIR}/= -fno-ident)
endif()

if(ORVANE_SANITIZERS)
  add_compile_options(-fsanitize=${ORVANE_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${ORVANE_SANITIZERS})
  if(ORVANE_SANITIZERS MATCHES "undefined")
    # This check opens a pipe to look at an object, and takes a shortage of descriptors, which is tested, for a bad object.
    add_compile_options(-fno-sanitize=vptr)
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The instrumentation hides from these two what the standard library's code has initialised and how large it is.
    add_compile_options(-Wno-maybe-uninitialized -Wno-array-bounds)
  endif()
endif()
