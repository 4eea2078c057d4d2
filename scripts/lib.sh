# Shared by ./play, ./test and the benches. Sourced, not run; $root is the project's folder.

say() { printf '%s\n' "$*"; }
fail() { printf 'error: %s\n' "$*" >&2; exit 1; }

readonly cache=${HULLRIDER_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/hullrider-radio}

# What each job needs from Debian.
readonly build_packages="g++ cmake ninja-build make pkg-config xz-utils nlohmann-json3-dev libavformat-dev libavcodec-dev
    libavutil-dev libswresample-dev libfluidsynth-dev libopenmpt-dev libsdl2-dev timgm6mb-soundfont ffmpeg libebur128-dev"
readonly windows_packages="g++-mingw-w64-x86-64-posix nasm patch googletest wine wine64 fonts-dejavu-core"
readonly screen_packages="xvfb"
readonly test_packages="libgtest-dev googletest xvfb xdotool x11-utils imagemagick python3"

# install PACKAGE...: installs those that are missing, says which, and nothing when there are none.
install() {
    local package missing=
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2> /dev/null)" = installed ] || missing+=" $package"
    done
    [ -n "$missing" ] || return 0
    local as_root=
    if [ "$(id -u)" != 0 ]; then
        command -v sudo > /dev/null || fail "these packages are missing and there is no sudo:$missing"
        as_root=sudo
    fi
    say "Installing from Debian:$missing"
    mkdir -p "$cache/log"
    {
        $as_root apt-get -qq update
        # shellcheck disable=SC2086
        $as_root env DEBIAN_FRONTEND=noninteractive apt-get -y --no-install-recommends install $missing
    } > "$cache/log/apt.log" 2>&1 || {
        tail -20 "$cache/log/apt.log" >&2
        fail "the packages could not be installed; the whole log is $cache/log/apt.log"
    }
}

# build PRESET [TARGET...]: configures and builds one preset; shows the compiler's words only when it fails.
build() {
    local preset=$1 log=$root/build/$1.log
    shift
    say "Building $preset${*:+ ($*)}"
    mkdir -p "$root/build"
    {
        cmake -S "$root" --preset "$preset" && cmake --build "$root/build/$preset" ${*:+--target} "$@"
    } > "$log" 2>&1 < /dev/null || {
        grep -E -A6 'error|Error' "$log" | head -60 >&2
        fail "the build failed; the whole log is $log"
    }
}

# wine_prefix FOLDER: makes Wine use that folder, and creates it when it is missing.
wine_prefix() {
    export WINEPREFIX=$1 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
    [ -f "$WINEPREFIX/system.reg" ] && return
    say "Preparing Wine (once)"
    mkdir -p "$(dirname "$WINEPREFIX")"
    # Without a display: there is nothing to show, and an X server may not be there yet.
    env -u DISPLAY wineboot -i > /dev/null 2>&1 || fail "Wine could not be prepared in $WINEPREFIX"
    wineserver -w
}

# start_screen: starts a virtual screen, sets DISPLAY, and ends it when the script ends.
start_screen() {
    local pipe
    pipe=$(mktemp -u)
    mkfifo "$pipe"
    Xvfb -displayfd 3 -screen 0 1600x900x24 -nolisten tcp 3> "$pipe" > /dev/null 2>&1 &
    screen_pid=$!
    local number
    read -r -t 20 number < "$pipe" || fail "the virtual screen did not start"
    rm -f "$pipe"
    export DISPLAY=:$number
    trap 'kill $screen_pid 2> /dev/null' EXIT
}
