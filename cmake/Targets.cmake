# The kinds of target. Rules see Qt Core only, so the build itself keeps windows out of them;
# screens see Qt Widgets. One precompiled header for each kind.

include_directories(${CMAKE_SOURCE_DIR}/cmake)
add_library(mirsa_pch_core STATIC ${CMAKE_SOURCE_DIR}/cmake/pch_core.cpp)
target_link_libraries(mirsa_pch_core PUBLIC Qt6::Core)
target_precompile_headers(mirsa_pch_core PRIVATE <pch_core.h>)

add_library(mirsa_pch_widgets STATIC ${CMAKE_SOURCE_DIR}/cmake/pch_widgets.cpp)
target_link_libraries(mirsa_pch_widgets PUBLIC Qt6::Widgets)
target_precompile_headers(mirsa_pch_widgets PRIVATE <pch_widgets.h>)

# Test programs: Google Test on top of the widgets. Qt Test defines a path of each target, which no
# shared header can hold.
add_library(mirsa_pch_test STATIC ${CMAKE_SOURCE_DIR}/cmake/pch_test.cpp)
target_link_libraries(mirsa_pch_test PUBLIC Qt6::Widgets GTest::gtest)
target_precompile_headers(mirsa_pch_test PRIVATE <pch_test.h>)

# The compiled headers hold the checkout's path. ccache goes by what they are made of instead, so that
# checkouts share their objects.
string(SHA256 pch_key "${CMAKE_CXX_COMPILER_VERSION} ${Qt6Core_VERSION} ${CMAKE_BUILD_TYPE} ${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_DEBUG} ${CMAKE_CXX_FLAGS_RELEASE} ${MIRSA_SANITIZE}")
foreach(kind core widgets test)
  file(SHA256 ${CMAKE_SOURCE_DIR}/cmake/pch_${kind}.h header_key)
  string(APPEND pch_key " ${header_key}")
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/CMakeFiles/mirsa_pch_${kind}.dir/cmake_pch.hxx.pch.sum CONTENT "${pch_key}\n")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/cmake/pch_${kind}.h)
endforeach()

# mirsa_rules(<target> SOURCES ... LINK ...): code without windows.
function(mirsa_rules target)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LINK")
  add_library(${target} STATIC ${ARG_SOURCES})
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${target} PUBLIC Qt6::Core ${ARG_LINK})
  target_precompile_headers(${target} REUSE_FROM mirsa_pch_core)
endfunction()

# mirsa_screens(<target> SOURCES ... LINK ...): screens, dialogs and controls.
function(mirsa_screens target)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LINK")
  add_library(${target} STATIC ${ARG_SOURCES})
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${target} PUBLIC Qt6::Widgets ${ARG_LINK})
  target_precompile_headers(${target} REUSE_FROM mirsa_pch_widgets)
endfunction()

# mirsa_test(<name> SOURCES ... LINK ...): one test program of a folder. It runs from the build
# tree without a display; MIRSA_TEST_SERVER (set by ./test) names the PostgreSQL server.
function(mirsa_test name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "TIMEOUT" "SOURCES;LINK")
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${ARG_LINK} mirsa_test_paths Qt6::Widgets GTest::gtest)
  target_precompile_headers(${name} REUSE_FROM mirsa_pch_test)
  add_test(NAME ${name} COMMAND ${name})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 300)
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT}
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen;TZ=UTC")
endfunction()
