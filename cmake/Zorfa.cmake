# Build helpers shared by every subsystem.
#
# Each subsystem is one static library whose sources are every .cpp below its
# folder, so adding a file needs no edit of a build file. Widget halves (files
# under a ui/ folder or named *Widget*) are left out of an engine library; the
# subsystem's own CMakeLists.txt decides where they go.

function(zorfa_collect_sources out dir)
  file(GLOB_RECURSE all CONFIGURE_DEPENDS "${dir}/*.cpp")
  set(engine)
  foreach(f IN LISTS all)
    if(NOT f MATCHES "/ui/" AND NOT f MATCHES "Widget[^/]*\\.cpp$")
      list(APPEND engine ${f})
    endif()
  endforeach()
  set(${out} ${engine} PARENT_SCOPE)
endfunction()

# zorfa_engine_library(name DEPS a b ...): a static library of plain C++ (no Qt).
function(zorfa_engine_library name)
  cmake_parse_arguments(ARG "" "" "DEPS" ${ARGN})
  zorfa_collect_sources(sources ${CMAKE_CURRENT_SOURCE_DIR})
  if(sources)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${ARG_DEPS})
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${name} INTERFACE ${ARG_DEPS})
  endif()
endfunction()

# zorfa_gtest(name DEPS ...): one GoogleTest executable from every .cpp of the
# current folder, registered with CTest. Tests get a private temporary folder.
function(zorfa_gtest name)
  cmake_parse_arguments(ARG "" "" "DEPS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE ${ARG_DEPS} GTest::gmock GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "ZORFA_SOURCE_DIR=${CMAKE_SOURCE_DIR};ZORFA_BIN_DIR=${ZORFA_BIN_DIR};QT_QPA_PLATFORM=offscreen")
endfunction()
