# What the files that a plant installs have in common.
option(KRX_PACKAGE "Note what the linker takes from where, as the bill of materials wants it" OFF)

# krx_packaged(TARGET): the target is one of the files that a plant gets.
function(krx_packaged target)
  if(KRX_PACKAGE)
    target_link_options(${target} PRIVATE -Wl,-Map=$<TARGET_FILE:${target}>.map)
  endif()
endfunction()

# krx_versioned(TARGET RC): the target tells its version by com/Version.rc.
function(krx_versioned target rc)
  target_link_libraries(${target} PRIVATE krx_version)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR})
  set_property(SOURCE ${rc} APPEND PROPERTY OBJECT_DEPENDS ${PROJECT_SOURCE_DIR}/com/Version.rc)
  krx_packaged(${target})
endfunction()

# krx_module(TARGET MANIFEST): a component, with the manifest beside it that programs name which use it without
# registration.
function(krx_module target manifest)
  krx_versioned(${target} ${target}.rc)
  # The entry points are exported under their plain names, on x86 too.
  target_link_options(${target} PRIVATE -Wl,--enable-stdcall-fixup)
  krx_manifest(${manifest})
endfunction()

# krx_manifest(MANIFEST.in): fills in version and width.
function(krx_manifest manifest)
  cmake_path(GET manifest STEM LAST_ONLY name)
  set(architecture amd64)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(architecture x86)
  endif()
  configure_file(${manifest} ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name} @ONLY NEWLINE_STYLE CRLF)
endfunction()
