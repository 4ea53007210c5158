# How the tree's targets are declared: one call in the CMakeLists.txt of each folder.

# orvane_sdk_room(PUBLIC_HEADERS a.h ... SOURCES a.cpp ...)
# Adds a folder of the protocol library to orvane_sdk and installs its public headers.
function(orvane_sdk_room)
  cmake_parse_arguments(PARSE_ARGV 0 room "" "" "PUBLIC_HEADERS;SOURCES")
  target_sources(orvane_sdk_objects PRIVATE ${room_SOURCES})
  cmake_path(GET CMAKE_CURRENT_SOURCE_DIR FILENAME folder)
  install(FILES ${room_PUBLIC_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/orvane/${folder} COMPONENT dev)
endfunction()

# orvane_add_test(name [QT] SOURCES a.cpp ... [LINK library ...])
# A GoogleTest program whose cases CTest runs one by one. LINK names the layer under test; nothing above it is reachable.
# QT if that is made of Qt.
function(orvane_add_test name)
  cmake_parse_arguments(PARSE_ARGV 1 test "QT" "" "SOURCES;LINK")
  add_executable(${name} ${test_SOURCES})
  target_link_libraries(${name} PRIVATE ${test_LINK} orvane_test_support GTest::gmock GTest::gtest_main)
  if(test_QT)
    target_precompile_headers(${name} REUSE_FROM orvane_test_precompiled_qt)
  else()
    target_precompile_headers(${name} REUSE_FROM orvane_test_precompiled)
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 600)
endfunction()

# orvane_layer(name SOURCES a.cpp ... LINK layer ... [PRIVATE_LINK library ...])
# A layer of the application. LINK names the layers below it, which its headers may include; PRIVATE_LINK what its
# sources alone use.
function(orvane_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 layer "" "" "SOURCES;LINK;PRIVATE_LINK")
  add_library(${name} STATIC ${layer_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${layer_LINK} PRIVATE ${layer_PRIVATE_LINK})
endfunction()
