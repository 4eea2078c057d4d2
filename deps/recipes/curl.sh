# curl: HTTP and HTTPS only, with Debian's security patches. On Windows with the system's own TLS (Schannel). Natively
# with Debian's OpenSSL, because Debian's libcurl brings some thirty shared libraries along: 6 MB of resident memory
# before the first request, where this one takes 2 MB.
fetch_sources() { fetch curl 8.14.1-2+deb13u5 'curl_*.orig.tar.gz' 'curl_*.debian.tar.xz'; }
build() {
    unpack curl 'curl_*.orig.tar.gz'
    unpack curl 'curl_*.debian.tar.xz'
    cd curl-*/
    local patch
    for patch in $(grep -E '^(CVE|cookie)' ../debian/patches/series); do
        patch -p1 -s < "../debian/patches/$patch"
    done
    "make_for_$target" -DBUILD_CURL_EXE=OFF -DBUILD_STATIC_LIBS=ON -DBUILD_TESTING=OFF -DBUILD_EXAMPLES=OFF \
        -DBUILD_LIBCURL_DOCS=OFF -DBUILD_MISC_DOCS=OFF -DENABLE_CURL_MANUAL=OFF -DHTTP_ONLY=ON \
        -DCURL_USE_LIBPSL=OFF -DCURL_USE_LIBSSH2=OFF -DCURL_ZLIB=OFF -DCURL_BROTLI=OFF -DCURL_ZSTD=OFF \
        -DUSE_NGHTTP2=OFF -DUSE_LIBIDN2=OFF -DPICKY_COMPILER=OFF
}

make_for_windows() { cross_cmake . -DCURL_USE_SCHANNEL=ON -DENABLE_UNICODE=ON "$@"; }
make_for_native() {
    cmake -G 'Unix Makefiles' -S . -B build-native -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" \
        -DCMAKE_INSTALL_LIBDIR=lib -DBUILD_SHARED_LIBS=OFF -DCURL_USE_OPENSSL=ON "$@"
    make -C build-native install
}
