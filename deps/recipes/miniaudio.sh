# miniaudio: sound devices. One header; the part that compiles it chooses what it holds.
fetch_sources() { fetch miniaudio 0.11.22+dfsg-1 'miniaudio_*.orig.tar.gz'; }
build() {
    unpack miniaudio 'miniaudio_*.orig.tar.gz'
    cp miniaudio-*/miniaudio.h "$prefix/include/"
}
