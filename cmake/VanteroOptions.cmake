# Options, warnings and the common properties of our targets.

if(PROJECT_IS_TOP_LEVEL) # a project that adds this one has its own BUILD_TESTING
  option(BUILD_TESTING "Build the tests and fuzz targets" ON)
endif()
option(VANTERO_BUILD_TESTS "Build our tests where BUILD_TESTING is on" ${PROJECT_IS_TOP_LEVEL})
option(VANTERO_BUILD_TOOL "Build the command-line tool vantero-formats" ${PROJECT_IS_TOP_LEVEL})
option(VANTERO_BUILD_BROWSER "Build the desktop program, which needs Qt Widgets"
  ${PROJECT_IS_TOP_LEVEL})
option(VANTERO_BUILD_EXAMPLES "Build the example programs" ${PROJECT_IS_TOP_LEVEL})
option(VANTERO_BUILD_BENCHMARKS "Build the benchmarks" OFF)
option(VANTERO_INSTALL "Create the install targets" ${PROJECT_IS_TOP_LEVEL})
option(VANTERO_WERROR "Treat warnings of our own sources as errors" OFF)
set(VANTERO_SANITIZE "" CACHE STRING "Sanitizers for every target, such as address,undefined")

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES AND PROJECT_IS_TOP_LEVEL)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

if(PROJECT_IS_TOP_LEVEL)
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
  set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
endif()

if(VANTERO_SANITIZE)
  add_compile_options(-fsanitize=${VANTERO_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  if(VANTERO_SANITIZE MATCHES "address")
    # As GCC says by itself: some tests leave out what the sanitizer's own memory makes void.
    add_compile_definitions($<$<CXX_COMPILER_ID:Clang>:__SANITIZE_ADDRESS__>)
  endif()
  add_link_options(-fsanitize=${VANTERO_SANITIZE})
endif()

# Settings that every target of ours shares, tests included.
function(vantero_target target)
  target_compile_features(${target} PUBLIC cxx_std_17)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON)
  target_compile_definitions(${target} PRIVATE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS
    $<$<NOT:$<CONFIG:Debug>>:QT_NO_DEBUG>)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  if(VANTERO_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

# An object library that becomes part of one of the shared libraries.
function(vantero_object_library target)
  add_library(${target} OBJECT ${ARGN})
  vantero_target(${target})
  target_include_directories(${target} PUBLIC "${PROJECT_SOURCE_DIR}")
  # Unique symbols would pin the library in memory; it must leave on dlclose. The functions that the
  # library calls are its own: nobody puts others of the same name in their place.
  target_compile_options(${target} PRIVATE
    $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
    -fno-semantic-interposition)
endfunction()

# The common properties of the two shared libraries.
function(vantero_shared_library target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "EXPORT_NAME" "")
  target_compile_features(${target} PUBLIC cxx_std_17)
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${arg_EXPORT_NAME}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    LINKER_LANGUAGE CXX)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/FileFormatsVantero>)
  set(EXPORT_NODE ${target}_${PROJECT_VERSION_MAJOR})
  set(map "${CMAKE_CURRENT_BINARY_DIR}/${target}.map")
  configure_file("${PROJECT_SOURCE_DIR}/cmake/Exports.map.in" "${map}" @ONLY)
  target_link_options(${target} PRIVATE "LINKER:--version-script=${map}"
    LINKER:--as-needed LINKER:-Bsymbolic-functions)
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${map}")
  if(NOT VANTERO_SANITIZE)
    target_link_options(${target} PRIVATE LINKER:-z,defs)
  endif()
endfunction()

# Names the headers of the calling folder that are installed.
function(vantero_public_headers)
  foreach(header IN LISTS ARGN)
    set_property(GLOBAL APPEND PROPERTY VANTERO_PUBLIC_HEADERS
      "${CMAKE_CURRENT_SOURCE_DIR}/${header}")
  endforeach()
endfunction()
