# nlohmann-json: headers only. Copied, because the native include folder must never be seen by the cross compiler.
fetch_sources() { [ -d /usr/include/nlohmann ] || fail "missing package: nlohmann-json3-dev"; }
build() { cp -r /usr/include/nlohmann "$prefix/include/"; }
