# FluidSynth: MIDI through SoundFonts. The fluidsynth source package's own tarball is not on every mirror, so this takes
# the copy inside the wine source package, which needs no GLib, and undoes what Wine switched off there: the default
# generators and modulators, the settings, and the log. No sequencer and no compressed SoundFonts (SF3).
fetch_sources() {
    fetch wine 10.0~repack-6 'wine_*.orig.tar.xz'
    fetch fluidsynth 2.4.4+dfsg-1+deb13u3 'fluidsynth_*.debian.tar.xz'
}

undo_wine_changes() {
    sed -i 's@#if 0 /\* unused in Wine \*/@#if 1@' src/synth/fluid_gen.c src/synth/fluid_synth.c
    sed -i '/fluid_shell_settings(settings)/,/fluid_midi_driver_settings/{/fluid_player_settings/!d}
            s@#if 0 /\* unused in Wine \*/@#if 1@
            /include "fluid_\(cmd\|adriver\|mdriver\).h"/d
            0,/#include "fluid_settings.h"/s@@&\n#include "fluid_midi.h"@' src/utils/fluid_settings.c
    sed -i '/wine\/debug.h/d;/WINE_DEFAULT_DEBUG/d;/define WINE_FLUID_/d
            s/^#define FLUID_LOG( x.*/#define FLUID_LOG fluid_log/;s/WINE_TRACE/printf/' src/utils/fluidsynth_priv.h
    # The version texts are stale there.
    sed -i 's/"2\.3\.6"/"2.4.0"/;s/VERSION_MINOR 3 /VERSION_MINOR 4 /;s/VERSION_MICRO 6 /VERSION_MICRO 0 /' \
        include/fluidsynth/version.h
}

write_shims() {
    cat > pre.h <<'C'
#pragma once
/* mingw-w64 10 lacks these two. */
#define ReadAcquire(p) __atomic_load_n((p), __ATOMIC_ACQUIRE)
#define __WINE_CRT_PRINTF_ATTR(a, b)
C
    cat > shim.c <<'C'
#include <windows.h>

/* Replaces a test that wants FILE_ATTRIBUTE_NORMAL and an ANSI path: here the path is UTF-8 and any file will do. */
int g_file_test(const char *path, int test)
{
    wchar_t wide[4096];
    DWORD attributes;
    if (!MultiByteToWideChar(CP_UTF8, 0, path, -1, wide, 4096)) return 0;
    attributes = GetFileAttributesW(wide);
    return attributes != INVALID_FILE_ATTRIBUTES && (test == 1 || !(attributes & FILE_ATTRIBUTE_DIRECTORY));
}
C
}

build() {
    unpack wine 'wine_*.orig.tar.xz' --wildcards '*/libs/fluidsynth/*' '*/COPYING.LIB'
    unpack fluidsynth 'fluidsynth_*.debian.tar.xz'
    cd wine-*/libs/fluidsynth
    undo_wine_changes
    local fix
    for fix in CVE-2025-56225 CVE-2026-61714; do
        patch -p1 -s < ../../../debian/patches/$fix.patch
    done
    write_shims

    local flags="-O2 -ffast-math -DNDEBUG -DHAVE_CONFIG_H -include pre.h -D_WIN32_WINNT=0x0601 -Wno-format"
    flags+=" -Werror=implicit-function-declaration -I. -Iinclude -Isrc"
    local folder source object objects=
    for folder in bindings midi rvoice sfloader synth utils; do flags+=" -Isrc/$folder"; done
    {
        printf 'all: libfluidsynth.a\n'
        for source in $(sed -n 's/^\t\(.*\.c\).*/\1/p' Makefile.in) shim.c; do
            object=$(basename "$source" .c).o
            objects+=" $object"
            local extra=
            [ "$source" = glib.c ] && extra=-Dg_file_test=wine_g_file_test
            printf '%s: %s\n\t%s %s %s -c $< -o $@\n' "$object" "$source" $cross_cc "$flags" "$extra"
        done
        printf 'libfluidsynth.a:%s\n\t%s-ar rcs $@ $^\n' "$objects" $cross
    } > rules.mk
    make -f rules.mk

    cp -r include/fluidsynth include/fluidsynth.h "$prefix/include/"
    cp libfluidsynth.a "$prefix/lib/"
}
