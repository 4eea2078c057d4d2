# GoogleTest for the Windows target; the native tests use Debian's own build.
fetch_sources() { [ -d /usr/src/googletest ] || fail "missing package: googletest"; }
build() { cross_cmake /usr/src/googletest; }
