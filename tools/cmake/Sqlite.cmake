# krx_add_sqlite(TARGET): the database, for what links TARGET. Native tests take the system's library; modules get
# Debian's own source package compiled in, without what they have no use for.
function(krx_add_sqlite target)
  if(NOT WIN32)
    find_package(SQLite3 REQUIRED)
    add_library(${target} INTERFACE)
    target_link_libraries(${target} INTERFACE SQLite::SQLite3)
    return()
  endif()
  set(source ${PROJECT_SOURCE_DIR}/build/sqlite)
  execute_process(COMMAND ${PROJECT_SOURCE_DIR}/tools/sqlite COMMAND_ERROR_IS_FATAL ANY)
  add_library(${target} STATIC ${source}/sqlite3.c)
  set_target_properties(${target} PROPERTIES UNITY_BUILD OFF)
  target_include_directories(${target} SYSTEM PUBLIC ${source})
  # No threads of its own and nothing loaded later: a module that is unloaded leaves nothing behind.
  target_compile_definitions(${target} PRIVATE
    SQLITE_THREADSAFE=1
    SQLITE_MAX_WORKER_THREADS=0
    SQLITE_TEMP_STORE=3
    SQLITE_DEFAULT_FOREIGN_KEYS=1
    SQLITE_DEFAULT_MEMSTATUS=0
    SQLITE_DQS=0
    SQLITE_SECURE_DELETE
    SQLITE_OMIT_AUTOINIT
    SQLITE_OMIT_DEPRECATED
    SQLITE_OMIT_LOAD_EXTENSION
    SQLITE_OMIT_SHARED_CACHE
    SQLITE_OMIT_WAL)
  # Others' code, whose warnings are others' affair.
  target_compile_options(${target} PRIVATE -w)
endfunction()
