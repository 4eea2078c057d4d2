# Shared by deps/build and the recipes. Sourced, not run.
#
# Cache layout ($HULLRIDER_CACHE, by default ~/.cache/hullrider-radio):
#   apt/       private package lists, so that the machine's own apt configuration stays as it is
#   sources/   downloaded source packages, PACKAGE-VERSION/, verified against the package list's checksums
#   built/     one prefix for each library and recipe key: NAME-KEY/
#   prefix/    one merged prefix for each target and set of keys, what CMake sees
#   log/       one log for each build

readonly cross=x86_64-w64-mingw32
readonly cross_cc=$cross-gcc-posix
readonly cross_cxx=$cross-g++-posix
readonly cache=${HULLRIDER_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/hullrider-radio}
readonly sources=$cache/sources

say() { printf '%s\n' "$*"; }
fail() { printf 'error: %s\n' "$*" >&2; exit 1; }

# The base addresses of the machine's own Debian mirror, one a line.
debian_mirrors() {
    apt-get indextargets --format '$(REPO_URI) $(CODENAME) $(ORIGIN)' 'Created-By: Packages' |
        awk '$3 == "Debian" && $2 !~ /-/ { print $1 }' | sort -u
}

# An apt command with lists of its own that name the source packages of bookworm and trixie.
source_apt() {
    local command=$1
    shift
    "$command" -o Dir::Etc::sourcelist="$cache/apt/sources.list" -o Dir::Etc::sourceparts=- \
        -o Dir::State::Lists="$cache/apt/lists" -o Dir::Cache="$cache/apt/cache" "$@"
}

# one_fetches COMMAND: runs it while no other recipe does; they share the package lists.
one_fetches() {
    exec 8> "$cache/fetch.lock"
    flock 8
    "$@"
    exec 8>&-
}

# The package lists are fetched once a run, by the first recipe that has something to download.
forget_source_lists() { rm -f "$cache/apt/fresh"; }
prepare_source_apt() {
    [ ! -f "$cache/apt/fresh" ] || return 0
    mkdir -p "$sources" "$cache"/apt/lists/partial "$cache"/apt/cache/archives/partial
    local mirror
    mirror=$(debian_mirrors | head -1)
    [ -n "$mirror" ] || fail "apt knows no Debian mirror here: run apt-get update"
    local keyring=/usr/share/keyrings/debian-archive-keyring.gpg suite
    for suite in bookworm trixie; do
        echo "deb-src [signed-by=$keyring] $mirror $suite main"
    done > "$cache/apt/sources.list"
    source_apt apt-get -qq update
    touch "$cache/apt/fresh"
}

# is_whole PACKAGE FILE: the file's checksum stands in the package lists. An interrupted download leaves half a file.
is_whole() {
    local sum
    sum=$(sha256sum "$2" | cut -d' ' -f1)
    # To the end, not grep -q: a pipe closed early counts as a failure here.
    source_apt apt-cache showsrc "$1" | grep "^ $sum " > /dev/null
}

# download PACKAGE[=VERSION] FOLDER PATTERN...: true when one whole file for each pattern has arrived in the folder. A
# mirror may lack some of a package's files, so apt's exit status says nothing about those that are wanted.
download() {
    local package=$1 folder=$2 pattern file
    shift 2
    rm -rf "$folder.part"
    mkdir -p "$folder.part"
    (cd "$folder.part" && source_apt apt-get -qq --download-only source "$package") || true
    for pattern in "$@"; do
        file=$(compgen -G "$folder.part/$pattern" | head -1) || return 1
        is_whole "${package%%=*}" "$file" || return 1
    done
    mv "$folder.part" "$folder"
}

# fetch PACKAGE VERSION PATTERN...: makes one file for each pattern appear in the package's folder below $sources.
fetch() {
    local package=$1 version=$2 folder
    shift 2
    folder=$sources/$package-$version
    [ ! -d "$folder" ] || return 0
    prepare_source_apt
    ! download "$package=$version" "$folder" "$@" || return 0
    say "$package $version could not be had; taking the version that is there"
    download "$package" "$folder" "$@" || fail "missing files of the source package $package $version: $*"
}

# unpack PACKAGE PATTERN [OPTION...]: unpacks the archive into the current folder.
unpack() {
    local archive
    archive=$(compgen -G "$sources/$1-*/$2" | sort -V | tail -1)
    shift 2
    tar xf "$archive" "$@"
}

# cross_cmake SOURCE [OPTION...]: configures, builds and installs into $prefix for Windows. By make, which takes its
# processors from the one above it.
cross_cmake() {
    local source=$1
    shift
    cmake -G 'Unix Makefiles' -S "$source" -B build-cross -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" -DBUILD_SHARED_LIBS=OFF "$@"
    make -C build-cross install
}
