# libopenmpt: tracker modules. Without mpg123 and vorbis: modules with compressed samples (MO3, OXM) are not in our list.
fetch_sources() { fetch libopenmpt 0.7.13-1 'libopenmpt_*.orig.tar.xz'; }
build() {
    unpack libopenmpt 'libopenmpt_*.orig.tar.xz'
    cd libopenmpt-*/
    ./configure --host=$cross --prefix="$prefix" --enable-static --disable-shared --disable-dependency-tracking \
        --disable-openmpt123 --disable-examples --disable-tests --disable-doxygen-doc --without-zlib \
        --without-mpg123 --without-ogg --without-vorbis --without-vorbisfile --without-portaudio \
        --without-portaudiocpp --without-sndfile --without-flac --without-pulseaudio --without-sdl2 \
        CC=$cross_cc CXX=$cross_cxx CXXFLAGS=-O2 PKG_CONFIG=false
    make -j"$jobs"
    make install
}
