# curl: HTTP and HTTPS only, on the system's own TLS (Schannel), with Debian's security patches.
fetch_sources() { fetch curl 8.14.1-2+deb13u5 'curl_*.orig.tar.gz' 'curl_*.debian.tar.xz'; }
build() {
    unpack curl 'curl_*.orig.tar.gz'
    unpack curl 'curl_*.debian.tar.xz'
    cd curl-*/
    local patch
    for patch in $(grep -E '^(CVE|cookie)' ../debian/patches/series); do
        patch -p1 -s < "../debian/patches/$patch"
    done
    cross_cmake . -DBUILD_CURL_EXE=OFF -DBUILD_STATIC_LIBS=ON -DBUILD_TESTING=OFF -DBUILD_EXAMPLES=OFF \
        -DBUILD_LIBCURL_DOCS=OFF -DBUILD_MISC_DOCS=OFF -DENABLE_CURL_MANUAL=OFF -DHTTP_ONLY=ON \
        -DCURL_USE_SCHANNEL=ON -DCURL_USE_LIBPSL=OFF -DCURL_USE_LIBSSH2=OFF -DCURL_ZLIB=OFF -DCURL_BROTLI=OFF \
        -DCURL_ZSTD=OFF -DUSE_NGHTTP2=OFF -DUSE_LIBIDN2=OFF -DENABLE_UNICODE=ON -DPICKY_COMPILER=OFF
}
