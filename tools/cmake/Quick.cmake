# What only saves time: headers that are compiled once for many targets, and files that are compiled
# together. Every file includes what it needs all the same: the presets "plain-..." look at each by itself.
option(KRX_PRECOMPILE "Precompile headers" ON)
option(KRX_TOGETHER "Compile several files as one" ON)
option(KRX_TESTS_TOGETHER "The same for the tests" ${KRX_TOGETHER})
set(CMAKE_UNITY_BUILD ${KRX_TOGETHER})
set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)
option(KRX_SYNTAX_ONLY "Look at every file, make nothing" OFF)

# krx_precompile(NAME LIBRARIES LIBRARY... HEADERS HEADER...): headers for the targets that
# krx_use_precompiled names; they have to be compiled with the same options.
function(krx_precompile name)
  if(NOT KRX_PRECOMPILE)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES;HEADERS")
  set(empty ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  file(CONFIGURE OUTPUT ${empty} CONTENT "")
  add_library(${name} OBJECT ${empty})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES})
  target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
endfunction()

# krx_use_precompiled(NAME TARGET...)
function(krx_use_precompiled name)
  if(KRX_PRECOMPILE)
    foreach(target ${ARGN})
      target_precompile_headers(${target} REUSE_FROM ${name})
    endforeach()
  endif()
endfunction()

# krx_link_quickly(): programs of this folder and below are linked in a fortieth of the time that the cross
# compiler's linker takes, with as much stack. What a client installs is linked by that one, and so is
# everything for x86, where exceptions find no handler otherwise.
macro(krx_link_quickly)
  find_program(KRX_LINKING_COMPILER clang++)
  find_program(KRX_QUICK_LINKER ld.lld)
  if(KRX_LINKING_COMPILER AND KRX_QUICK_LINKER AND CMAKE_SIZEOF_VOID_P EQUAL 8 AND NOT KRX_SYNTAX_ONLY)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-libgcc-file-name
      OUTPUT_VARIABLE libgcc OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    cmake_path(GET libgcc PARENT_PATH libgcc)
    set(CMAKE_CXX_LINK_EXECUTABLE "${KRX_LINKING_COMPILER} --target=${KRX_MINGW_PREFIX} -fuse-ld=lld -Wl,--stack,2097152 \
-L${libgcc} <LINK_FLAGS> <OBJECTS> -o <TARGET> <LINK_LIBRARIES> -lpthread")
  endif()
endmacro()

if(KRX_SYNTAX_ONLY)
  add_compile_options(-fsyntax-only)
  set(CMAKE_C_CREATE_STATIC_LIBRARY "<CMAKE_COMMAND> -E touch <TARGET>")
  set(CMAKE_CXX_CREATE_STATIC_LIBRARY "<CMAKE_COMMAND> -E touch <TARGET>")
  set(CMAKE_CXX_CREATE_SHARED_LIBRARY "<CMAKE_COMMAND> -E touch <TARGET>")
  set(CMAKE_CXX_LINK_EXECUTABLE "<CMAKE_COMMAND> -E touch <TARGET>")
endif()
