# Shared by ./play and ./test. Sourced, not run; $root is the project's folder.

say() { printf '%s\n' "$*"; }
fail() { printf 'error: %s\n' "$*" >&2; exit 1; }

# File names are UTF-8; Wine goes by the locale.
case ${LC_ALL:-${LC_CTYPE:-${LANG:-}}} in
    *[Uu][Tt][Ff]*8) ;;
    *) export LC_ALL=C.UTF-8 ;;
esac

readonly cache=${HULLRIDER_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/hullrider-radio}

# What each job needs from Debian.
readonly build_packages="g++ cmake ninja-build make nasm patch pkg-config xz-utils nlohmann-json3-dev libebur128-dev
    ca-certificates timgm6mb-soundfont ffmpeg"
readonly native_packages="libfluidsynth-dev libopenmpt-dev libsdl2-dev libsoundtouch-dev libssl-dev"
readonly windows_packages="g++-mingw-w64-x86-64-posix wine wine64 fonts-wine fonts-dejavu-core x11-utils xvfb"
readonly test_packages="googletest libgtest-dev python3 pulseaudio pulseaudio-utils icecast2"

# show_end LOG [PATTERN]: the lines that tell what went wrong, or the last ones.
show_end() {
    { grep -E -A6 "${2:-error}" "$1" || tail -20 "$1"; } 2> /dev/null | sed -n 1,60p >&2 || true
}

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
    # A freshly started machine may be updating itself. And whether a list that cannot be fetched matters, the
    # installation shows.
    local wait_for_others="-o DPkg::Lock::Timeout=600" log=$cache/log/apt.log
    # shellcheck disable=SC2086
    $as_root apt-get -qq $wait_for_others update > "$log" 2>&1 || true
    # shellcheck disable=SC2086
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get -y $wait_for_others --no-install-recommends install $missing \
        >> "$log" 2>&1 < /dev/null || {
        show_end "$log" '^E:'
        fail "the packages could not be installed; the whole log is $log"
    }
}

# one_at_a_time, and let_others: two runs in one checkout must not build in the same folders at once.
one_at_a_time() {
    mkdir -p "$root/build"
    exec 8> "$root/build/lock"
    flock -n 8 || { say "Waiting for another run in this checkout"; flock 8; }
}
let_others() { exec 8>&-; }

# build PRESET TESTS [TARGET...]: configures and builds one preset, with the tests (ON) or without them (OFF). Shows the
# compiler's words only when it fails.
build() {
    local preset=$1 tests=$2 log=$root/build/$1.log
    shift 2
    say "Building $preset${*:+ ($*)}"
    if ! cmake -S "$root" --preset "$preset" -DHULLRIDER_TESTS="$tests" > "$log" 2>&1 < /dev/null ||
        ! cmake --build "$root/build/$preset" ${*:+--target} "$@" >> "$log" 2>&1 < /dev/null; then
        show_end "$log" 'error|Error'
        fail "the build failed; the whole log is $log"
    fi
}

# wine_prefix FOLDER: makes Wine use that folder, and creates it when it is missing.
wine_prefix() {
    export WINEPREFIX=$1 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
    local stamp=$WINEPREFIX/.prepared
    [ ! -f "$stamp" ] || return 0
    say "Preparing Wine (once)"
    mkdir -p "$WINEPREFIX"
    # Without a display: there is nothing to show, and an X server may not be there yet.
    env -u DISPLAY wineboot -i > /dev/null 2>&1 < /dev/null || fail "Wine could not be prepared in $WINEPREFIX"
    wineserver -w
    # Wine links its Documents to the home folder, where the native player keeps its files: their paths differ.
    local documents
    for documents in "$WINEPREFIX"/drive_c/users/*/Documents; do
        [ -L "$documents" ] && rm "$documents" && mkdir "$documents"
    done
    touch "$stamp"
}

# start_screen: starts a virtual screen, sets DISPLAY, and ends it when the script ends. In a session of its own, so that
# Ctrl+C ends the player in order and not its screen.
start_screen() {
    local folder number
    folder=$(mktemp -d)
    mkfifo "$folder/number"
    setsid Xvfb -displayfd 3 -screen 0 1600x900x24 -nolisten tcp 3> "$folder/number" > /dev/null 2>&1 &
    screen_pid=$!
    trap 'kill $screen_pid 2> /dev/null' EXIT
    read -r -t 20 number < "$folder/number" || fail "the virtual screen did not start"
    rm -rf "$folder"
    export DISPLAY=:$number
}
