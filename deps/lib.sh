# Shared by deps/build and the recipes. Sourced, not run.
#
# Cache layout ($HULLRIDER_CACHE, by default ~/.cache/hullrider-radio):
#   apt/       private package lists, so that the machine's own apt configuration stays as it is
#   sources/   downloaded source packages, verified by apt
#   built/     one prefix for each library and recipe key: NAME-KEY/
#   prefix/    one merged prefix for each target and set of keys, what CMake sees
#   log/       one log for each build

readonly cross=x86_64-w64-mingw32
readonly cross_cc=$cross-gcc-posix
readonly cross_cxx=$cross-g++-posix
readonly cache=${HULLRIDER_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/hullrider-radio}
readonly sources=$cache/sources
readonly jobs=$(nproc)

say() { printf '%s\n' "$*"; }
fail() { printf 'error: %s\n' "$*" >&2; exit 1; }

# The base addresses of the machine's own Debian mirror, one a line.
debian_mirrors() {
    apt-get indextargets --format '$(REPO_URI) $(CODENAME) $(ORIGIN)' 'Created-By: Packages' |
        awk '$3 == "Debian" && $2 !~ /-/ { print $1 }' | sort -u
}

# apt-get with lists of its own that name the source packages of bookworm and trixie.
source_apt() {
    apt-get -o Dir::Etc::sourcelist="$cache/apt/sources.list" -o Dir::Etc::sourceparts=- \
        -o Dir::State::Lists="$cache/apt/lists" -o Dir::Cache="$cache/apt/cache" "$@"
}

prepare_source_apt() {
    [ -n "${source_apt_ready:-}" ] && return
    source_apt_ready=yes
    mkdir -p "$sources" "$cache"/apt/lists/partial "$cache"/apt/cache/archives/partial
    local mirror
    mirror=$(debian_mirrors | head -1)
    [ -n "$mirror" ] || fail "no Debian mirror in this machine's apt configuration"
    local keyring=/usr/share/keyrings/debian-archive-keyring.gpg suite
    for suite in bookworm trixie; do
        echo "deb-src [signed-by=$keyring] $mirror $suite main"
    done > "$cache/apt/sources.list"
    source_apt -qq update
}

# fetch PACKAGE VERSION PATTERN...: makes one file for each pattern appear in $sources.
# A mirror may lack some of a package's files, so apt's exit status says nothing: each wanted file is looked for by name.
fetch() {
    local package=$1 version=$2 pattern
    shift 2
    have_all() { for pattern in "$@"; do compgen -G "$sources/$pattern" > /dev/null || return 1; done; }
    have_all "$@" && return
    prepare_source_apt
    (cd "$sources" && source_apt -qq --download-only source "$package=$version") || true
    have_all "$@" && return
    say "$package $version is not on the mirror; taking the version that is there"
    (cd "$sources" && source_apt -qq --download-only source "$package") || true
    for pattern in "$@"; do
        compgen -G "$sources/$pattern" > /dev/null || fail "missing file: $pattern (source package $package $version)"
    done
}

# unpack PATTERN [MEMBER...]: unpacks the newest matching archive into the current folder.
unpack() {
    local pattern=$1 archive
    shift
    archive=$(compgen -G "$sources/$pattern" | sort -V | tail -1)
    tar xf "$archive" "$@"
}

# cross_cmake SOURCE [OPTION...]: configures, builds and installs into $prefix for Windows.
cross_cmake() {
    local source=$1
    shift
    cmake -G Ninja -S "$source" -B build-cross -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" -DBUILD_SHARED_LIBS=OFF "$@"
    ninja -C build-cross -j"$jobs" install
}
