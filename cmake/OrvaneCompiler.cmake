# Language level, warnings and sanitizers for every target of the tree.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(ORVANE_WARNINGS_AS_ERRORS)
  add_compile_options(-Werror)
endif()

if(ORVANE_SANITIZERS)
  add_compile_options(-fsanitize=${ORVANE_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${ORVANE_SANITIZERS})
endif()
