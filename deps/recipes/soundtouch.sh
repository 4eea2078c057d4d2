# SoundTouch: tempo without pitch, with float samples.
fetch_sources() { fetch soundtouch 2.3.2+ds1-1 'soundtouch_*.orig.tar.xz'; }
build() {
    unpack soundtouch 'soundtouch_*.orig.tar.xz'
    cross_cmake soundtouch* -DSOUNDSTRETCH=OFF -DSOUNDTOUCH_DLL=OFF
}
