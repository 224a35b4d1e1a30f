# Compile settings shared by every target, and the two helpers that declare libraries and tests.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)

find_program(JXC_CCACHE ccache)
if(JXC_CCACHE)
  # Paths below the folder that holds the work trees count as relative: an object that one tree has compiled serves the
  # others, and a fresh clone beside them.
  get_filename_component(trees "${CMAKE_SOURCE_DIR}" DIRECTORY)
  set(CMAKE_CXX_COMPILER_LAUNCHER env "CCACHE_BASEDIR=${trees}" CCACHE_NOHASHDIR=1 "${JXC_CCACHE}")
endif()
find_program(JXC_MOLD mold)
if(JXC_MOLD)
  add_link_options(-fuse-ld=mold)
endif()

# One set of flags for everything: the border between modules is a matter of linking, not of options.
add_library(jxc_options INTERFACE)
set(werror)
if(JXC_WERROR)
  set(werror -Werror)
endif()
target_compile_options(jxc_options INTERFACE -Wall -Wextra ${werror} -Wshadow=local -Wnon-virtual-dtor -Wno-missing-field-initializers)
# gcc 12 at -O2 takes `"x" + std::string` for a copy onto itself (its bug 105651, mended in 13).
target_compile_options(jxc_options INTERFACE
  $<$<AND:$<CONFIG:Release>,$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
target_compile_definitions(jxc_options INTERFACE QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_CAST_TO_ASCII)
target_include_directories(jxc_options INTERFACE "${CMAKE_SOURCE_DIR}/src")
if(JXC_SANITIZE)
  # gcc sees uninitialised values in the code that the sanitizers put in.
  target_compile_options(jxc_options INTERFACE -Wno-maybe-uninitialized -fsanitize=address,undefined -fno-sanitize-recover=undefined)
  target_link_options(jxc_options INTERFACE -fsanitize=address,undefined)
endif()

# jxc_library(name FOLDERS folder... LINK target... [PCH header])
# Sources are found by folder, so that a new file needs no change here.
function(jxc_library name)
  cmake_parse_arguments(ARG "" "PCH" "FOLDERS;LINK" ${ARGN})
  set(sources)
  set(resources)
  foreach(folder IN LISTS ARG_FOLDERS)
    file(GLOB found CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/src/${folder}/*.cpp" "${CMAKE_SOURCE_DIR}/src/${folder}/*.h")
    list(APPEND sources ${found})
    file(GLOB found CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/src/${folder}/*.qrc")
    list(APPEND resources ${found})
  endforeach()
  if(NOT sources MATCHES "\\.cpp")  # only headers so far
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE jxc_options ${ARG_LINK})
    return()
  endif()
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC jxc_options ${ARG_LINK})
  foreach(qrc IN LISTS resources)
    jxc_resources(${name} "${qrc}")
  endforeach()
  jxc_speed(${name} "${ARG_PCH}")
endfunction()

# A resource file into a library. By hand: what CMake and Qt's own helper make of it breaks where the path of the checkout
# has brackets or an & in it.
function(jxc_resources target qrc)
  get_filename_component(name "${qrc}" NAME_WE)
  set(made "${CMAKE_CURRENT_BINARY_DIR}/qrc_${name}.cpp")
  add_custom_command(OUTPUT "${made}"
    COMMAND Qt6::rcc --name ${name} --output "${made}" --depfile "${made}.d" "${qrc}"
    DEPENDS "${qrc}" DEPFILE "${made}.d" VERBATIM)
  set_source_files_properties("${made}" PROPERTIES
    SKIP_AUTOGEN ON SKIP_UNITY_BUILD_INCLUSION ON SKIP_PRECOMPILE_HEADERS ON)
  target_sources(${target} PRIVATE "${made}")
endfunction()

function(jxc_speed name pch)
  set_target_properties(${name} PROPERTIES UNITY_BUILD ${JXC_UNITY} UNITY_BUILD_BATCH_SIZE 8)
  if(JXC_PCH AND pch)
    target_precompile_headers(${name} PRIVATE "${CMAKE_SOURCE_DIR}/src/${pch}")
  endif()
endfunction()
