# What makes a fault in memory end the program instead of serving somebody: the flags with which Debian builds its
# packages, for every target and whoever builds. tools/check-hardening reads the built program.
option(SEEDMOTE_HARDENING "Build with the hardening flags, but for debugging" ON)

include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)  # without it CMAKE_POSITION_INDEPENDENT_CODE does not reach the linker

if(SEEDMOTE_HARDENING AND NOT SEEDMOTE_SANITIZE)
  set(hardening
    -fstack-protector-strong -fstack-clash-protection -Wformat -Werror=format-security
    -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2  # whatever level the package's own flags name
    -D_GLIBCXX_ASSERTIONS)                 # indices and empty containers of the standard library
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i[3-6]86)$")
    list(APPEND hardening -fcf-protection)
  elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$")
    list(APPEND hardening -mbranch-protection=standard)
  endif()
  add_compile_options("$<$<NOT:$<CONFIG:Debug>>:${hardening}>")
  add_link_options("$<$<NOT:$<CONFIG:Debug>>:-Wl,-z,relro,-z,now>")
endif()
