# krx_add_idl(TARGET IDL): compiles an IDL file into a header, its identifiers and a type library.
# Linking TARGET brings the header's folder; the type library lies there as NAME.tlb.
#
# Type libraries hold single-byte texts, so the UTF-8 source is converted first; otherwise every
# umlaut of the help texts would arrive as two characters.
set(KRX_BASE_IDL_DIR /usr/include/wine/wine/windows CACHE PATH "Folder of the platform's base IDL files")
set(KRX_TYPELIB_DIR /usr/lib/x86_64-linux-gnu/wine/x86_64-windows CACHE PATH
    "Folder of the platform's own type libraries")

function(krx_add_idl target idl)
  cmake_path(GET idl STEM name)
  set(source ${CMAKE_CURRENT_SOURCE_DIR}/${idl})
  set(out ${CMAKE_CURRENT_BINARY_DIR}/idl)
  # Named without its folder, which the compiler would write down.
  set(ansi ${name}.ansi.idl)
  set(version ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  set(widl ${KRX_WIDL} ${KRX_WIDL_TARGET} -DKRX_VERSION=${version} -I${KRX_BASE_IDL_DIR} -L${KRX_TYPELIB_DIR})
  set(settle ${PROJECT_SOURCE_DIR}/tools/cmake/settle-typelib)
  file(MAKE_DIRECTORY ${out})
  add_custom_command(
    OUTPUT ${out}/${name}.h ${out}/${name}_i.c ${out}/${name}.tlb
    COMMAND iconv -f UTF-8 -t CP1252 ${source} > ${ansi}
    COMMAND ${widl} -h -o ${name}.h ${ansi}
    COMMAND ${widl} -u -o ${name}_i.c ${ansi}
    COMMAND ${widl} -t -o ${name}.tlb ${ansi}
    COMMAND ${settle} ${name}.tlb
    DEPENDS ${source} ${settle}
    WORKING_DIRECTORY ${out}
    VERBATIM)
  add_custom_target(${target}_files DEPENDS ${out}/${name}.h ${out}/${name}_i.c ${out}/${name}.tlb)
  add_library(${target} INTERFACE)
  add_dependencies(${target} ${target}_files)
  target_include_directories(${target} SYSTEM INTERFACE ${out})
endfunction()
