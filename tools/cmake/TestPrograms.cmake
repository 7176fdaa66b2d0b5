# krx_test_program(NAME [BEFORE_REGISTRATION] SECONDS N SOURCES FILE...): a program of tests, which ./test
# finds by itself in the file "test-programs" of the build. The longest, by the seconds that they take
# about, are begun first. BEFORE_REGISTRATION: while the components are not registered.
function(krx_test_program name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "BEFORE_REGISTRATION" "SECONDS" "SOURCES")
  add_executable(${name} ${arg_SOURCES})
  if(arg_BEFORE_REGISTRATION)
    krx_list_test_program(${name} ${arg_SECONDS} unregistered)
  elseif(WIN32)
    krx_list_test_program(${name} ${arg_SECONDS} registered)
  else()
    krx_list_test_program(${name} ${arg_SECONDS} native)
  endif()
endfunction()

# krx_list_test_program(TARGET SECONDS KIND): one line of the list.
function(krx_list_test_program name seconds kind)
  set_property(GLOBAL APPEND PROPERTY krx_test_programs "${seconds} ${kind} ${name} $<TARGET_FILE:${name}>")
endfunction()

# Writes the list; called once, behind all programs.
function(krx_write_test_programs)
  get_property(programs GLOBAL PROPERTY krx_test_programs)
  list(JOIN programs "\n" lines)
  file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/test-programs CONTENT "${lines}\n")
endfunction()
