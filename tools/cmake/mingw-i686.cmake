set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(KRX_MINGW_PREFIX i686-w64-mingw32)
set(KRX_WIDL_TARGET --win32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
# Single precision as on x64: the x87 unit would keep lengths wider than a twip's float.
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
