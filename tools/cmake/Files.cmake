# krx_files(VARIABLE PATTERN... [EXCEPT FILE...]): the files of this folder that match; a new one is found by
# the next build.
function(krx_files variable)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "EXCEPT")
  file(GLOB files RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} CONFIGURE_DEPENDS ${arg_UNPARSED_ARGUMENTS})
  list(REMOVE_ITEM files "" ${arg_EXCEPT})
  set(${variable} ${files} PARENT_SCOPE)
endfunction()
