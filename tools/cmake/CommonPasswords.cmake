# krx_add_common_passwords(TARGET): the list of passwords that are refused, made out of a package's.
function(krx_add_common_passwords target)
  set(script ${PROJECT_SOURCE_DIR}/tools/common-passwords)
  set(made ${CMAKE_CURRENT_BINARY_DIR}/CommonPasswordList.cpp)
  add_custom_command(OUTPUT ${made} COMMAND ${script} ${made} DEPENDS ${script} VERBATIM)
  target_sources(${target} PRIVATE ${made})
  # A unit of its own: the linker's account then tells which modules have the list.
  set_source_files_properties(${made} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
