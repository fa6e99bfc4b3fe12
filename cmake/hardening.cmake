# The hardening of a Debian package: the flags dpkg-buildflags gives for
# hardening=+all on Debian 12 (stack protector, format checks, fortified
# calls, full RELRO with immediate binding; PIE is the compiler's default),
# with control-flow protection, and calls fortified also where a buffer's
# size is known only at run time (level 3, which GCC 12 has). Every build
# has them but the sanitizers' and the fuzzers', which bring checks of their
# own: the program is tested as it is shipped.
option(VERLIS_HARDEN "Build with Debian's hardening flags" ON)
if(VERLIS_HARDEN)
  add_compile_options(-fstack-protector-strong -fcf-protection -Wformat -Werror=format-security
                      -Wdate-time)
  add_compile_definitions(_FORTIFY_SOURCE=3)
  add_link_options(-Wl,-z,relro -Wl,-z,now)
endif()
