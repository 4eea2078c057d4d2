# FFmpeg: audio demuxers and decoders only, LGPL. Network transfers are curl's; the http protocols are there for
# segmented streams, whose demuxer insists on them. Native too, because Debian's own brings 130 shared libraries along:
# 25 MB of resident memory before the first song.
fetch_sources() { fetch ffmpeg 7:7.1.5-0+deb13u1 'ffmpeg_7*.orig.tar.xz'; }
build() {
    unpack ffmpeg 'ffmpeg_7*.orig.tar.xz'
    cd ffmpeg-7*/
    local pcm=pcm_u8,pcm_s16le,pcm_s16be,pcm_s24le,pcm_s24be,pcm_s32le,pcm_s32be,pcm_f32le,pcm_f32be,pcm_f64le
    pcm+=,pcm_f64be,pcm_alaw,pcm_mulaw
    local system=
    case $target in
        native) system="--enable-pthreads --enable-pic" ;;
        windows)
            system="--arch=x86_64 --target-os=mingw32 --enable-cross-compile --cross-prefix=$cross- --cc=$cross_cc
                --cxx=$cross_cxx --disable-pthreads --enable-w32threads --enable-schannel --enable-protocol=tls"
            ;;
    esac
    # shellcheck disable=SC2086
    ./configure --prefix="$prefix" $system --pkg-config=false \
        --enable-static --disable-shared --disable-programs --disable-doc --disable-debug \
        --disable-autodetect --disable-everything --disable-avdevice --disable-avfilter --disable-swscale \
        --disable-postproc --enable-network --enable-protocol=file,http,https,tcp \
        --enable-demuxer=mp3,aac,mov,flac,ogg,wav,mpegts,hls \
        --enable-decoder=mp3float,mp3,aac,aac_latm,alac,flac,vorbis,opus,$pcm \
        --enable-parser=mpegaudio,aac,aac_latm,flac,vorbis,opus
    make
    make install
}
