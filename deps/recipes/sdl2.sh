# SDL2: game controllers only.
fetch_sources() { fetch libsdl2 2.32.4+dfsg-1 'libsdl2_*.orig.tar.gz'; }
build() {
    unpack libsdl2 'libsdl2_*.orig.tar.gz'
    cross_cmake SDL2-* -DSDL_SHARED=OFF -DSDL_STATIC=ON -DSDL_TEST=OFF -DSDL_VIDEO=OFF -DSDL_RENDER=OFF \
        -DSDL_AUDIO=OFF -DSDL_POWER=OFF -DSDL_EVENTS=ON -DSDL_JOYSTICK=ON -DSDL_HAPTIC=ON -DSDL_HIDAPI=ON \
        -DSDL_SENSOR=ON
}
