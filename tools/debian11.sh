# Debian 11, the last release with Python 2.7, as far as the tools take something of it: read after common.sh. The
# packages come from the mirrors that apt is configured with, or the one that DEBIAN_MIRROR names, and are unpacked
# below build/. The system's own package configuration and database stay as they are, and root is not needed.
# Shared variables: top, arch, triplet, loader; packages, of the tool; work, the folder of one that is at work.
# shellcheck shell=bash disable=SC2034,SC2154
umask 022
readonly debian=bullseye
top=$(cd "$(dirname "$0")/.." && pwd -P)

# target ARCH: what the tool was asked for.
target() {
    arch=$1
    case $arch in
        amd64) triplet=x86_64-linux-gnu loader=/lib64/ld-linux-x86-64.so.2 ;;
        i386) triplet=i386-linux-gnu loader=/lib/ld-linux.so.2 ;;
        *) refuse "unknown architecture '$arch': amd64 or i386" ;;
    esac
}

# require_debian ADVICE: what to do where there is no Debian.
require_debian() {
    local tool
    for tool in apt-get apt-config dpkg-deb flock; do
        command -v "$tool" >/dev/null || die "$tool is not here: outside Debian, $1"
    done
}

# lock NAME: one at a time works in build/NAME.
lock() {
    mkdir -p "$top/build/$1"
    exec 9>"$top/build/$1/.lock"
    flock 9
}

# work_in NAME WHAT: makes the folder $work in build/NAME, whose lock is held.
work_in() {
    what=$2
    say "taking $what from Debian 11's packages into build/$1"
    rm -rf "$top/build/$1"/.new-*  # of one that was killed
    work=$(mktemp -d "$top/build/$1/.new-XXXXXX")
    trap clean_up EXIT
}

# clean_up: at the end, removes the folder that was worked in; after a failure, says what happened there.
clean_up() {
    local status=$?
    if [ $status -ne 0 ]; then
        sed 's/^/  /' "$work/log" >&2
        say "$what could not be had from Debian 11's packages"
    fi
    rm -rf "$work"
}

# replace FOLDER NEW
replace() {
    rm -rf "$1"
    mkdir -p "${1%/*}"
    mv "$2" "$1"
}

# mirrors: the mirrors from which apt gets the running release of Debian.
mirrors() {
    if [ -n "${DEBIAN_MIRROR:-}" ]; then
        printf '%s\n' "$DEBIAN_MIRROR"
        return
    fi
    local release
    # shellcheck source=/dev/null
    release=$(. /etc/os-release && printf '%s' "${VERSION_CODENAME:-}")
    # An empty folder of lists makes apt name every source, also where 'apt-get update' never ran.
    mkdir -p "$work/no-lists/partial"
    apt-get -o Dir::State::lists="$work/no-lists" update --print-uris |
        sed -n "s#^'\(.*\)/dists/$release/InRelease' .*#\1#p" | sort -u
}

# apt_for MIRROR: makes $work/apt.conf, by which apt sees that mirror's Debian 11 and nothing else.
apt_for() {
    local state=$work/apt
    rm -rf "$state"
    mkdir -p "$state/lists/partial" "$state/archives/partial"
    : >"$state/status"
    printf 'deb [signed-by=%s] %s %s main\n' \
        /usr/share/keyrings/debian-archive-keyring.gpg "$1" "$debian" >"$state/sources.list"
    # How this machine reaches mirrors (proxies, certificates) stays; its sources, pins and hooks do not. The
    # proxy's address may hold a password.
    (umask 077 && apt-config dump | sed -n '/^Acquire::IndexTargets/d; /^Acquire::/p' >"$work/apt.conf")
    cat >>"$work/apt.conf" <<CONFIGURATION
APT::Architecture "$arch"; APT::Architectures { "$arch"; }; APT::Sandbox::User "$(id -un)";
APT::Update::Error-Mode "any"; Acquire::Languages "none";
Dir::State "$state"; Dir::State::lists "$state/lists"; Dir::State::status "$state/status";
Dir::Cache "$state"; Dir::Cache::archives "$state/archives"; Dir::Log "$state";
Dir::Etc::sourcelist "$state/sources.list"; Dir::Etc::sourceparts "/dev/null";
Dir::Etc::main "/dev/null"; Dir::Etc::parts "/dev/null";
Dir::Etc::preferences "/dev/null"; Dir::Etc::preferencesparts "/dev/null";
CONFIGURATION
    export APT_CONFIG=$work/apt.conf
    apt-get -q update
}

# download: puts the packages into $work/packages, from the first mirror that has them.
download() {
    local mirror
    mkdir "$work/packages"
    for mirror in $(mirrors); do
        if (apt_for "$mirror" && cd "$work/packages" && apt-get -q download "${packages[@]}"); then
            return
        fi
    done
    say "no mirror that apt is configured with has them; DEBIAN_MIRROR can name one"
    return 1
}
