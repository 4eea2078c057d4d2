# libopenmpt: tracker modules. Without zlib, mpg123 and vorbis: modules with compressed samples (MO3, OXM) are not in our
# list. Compiled in a few large pieces: taken one by one, its files spend most of their time in the same headers.
fetch_sources() { fetch libopenmpt 0.7.13-1 'libopenmpt_*.orig.tar.xz'; }

# piece NAME FILE...: one source file made of those.
piece() {
    local name=$1
    shift
    printf '#include "%s"\n' "$@" > "piece_$name.cpp"
}

build() {
    unpack libopenmpt 'libopenmpt_*.orig.tar.xz'
    cd libopenmpt-*/
    # These headers are made to be included once.
    find soundlib/plugins -name '*.h' -exec sed -i '1i #pragma once' {} +
    # Apart from each other: what includes windows.h, and what takes the compiler longest.
    piece common common/*.cpp
    piece api libopenmpt/libopenmpt_{cxx,impl,ext_impl}.cpp sounddsp/*.cpp
    piece mix soundlib/{Fastmix,MixFuncTable,MixerLoops,Snd_fx,Sndmix}.cpp
    piece load soundlib/[Ll]oad_*.cpp
    local others=() file
    for file in soundlib/*.cpp soundlib/plugins/*.cpp soundlib/plugins/dmo/*.cpp; do
        grep -qF "\"$file\"" piece_*.cpp || others+=("$file")
    done
    piece others "${others[@]}"

    local flags="-std=c++20 -O2 -DLIBOPENMPT_BUILD -DMPT_PACKAGE=true -D_FILE_OFFSET_BITS=64 -D_UNICODE"
    flags+=" -DNOMINMAX -I. -Isrc -Icommon -Ibuild/svn_version -municode -mthreads"
    {
        printf 'libopenmpt.a: piece_load.o piece_mix.o piece_others.o piece_api.o piece_common.o\n'
        printf '\t%s-ar rcs $@ $^\n' "$cross"
        printf '%%.o: %%.cpp\n\t%s %s -c $< -o $@\n' "$cross_cxx" "$flags"
    } > rules.mk
    make -f rules.mk
    mkdir -p "$prefix/include/libopenmpt"
    cp libopenmpt/libopenmpt{,_config,_version}.h libopenmpt/libopenmpt.hpp "$prefix/include/libopenmpt/"
    cp libopenmpt.a "$prefix/lib/"
}
