#!/usr/bin/env bash
# tests/installed.sh ROOT BINDING PACKAGE...
#
# Installs packages in a copy of ROOT, a bare Debian 11 (tools/root), runs both examples and some of the tests there with
# its own Python 2.7, removes the packages, and fails if one of them fails or anything is left. BINDING is the
# binding.tsv of the build that the packages are made of. tools/test --installed starts this, as root.
set -euo pipefail
. "$(dirname "$0")/../tools/common.sh"
[ $# -ge 3 ] || refuse
[ "$(id -u)" -eq 0 ] || die 'only root can install packages and enter another root'

# What needs nothing of the build but that list, from each part: every function once, conversions, records, text,
# callbacks, exceptions of the platform, the simulated switch and its shell, the package above the module.
sample=(argument_lifetime arrays callbacks companion conversions departures diagnose example handlers hw_mac_table l2
    mdio_access packets platform_bring_up platform_devices pointer_object port quorel_callbacks quorel_calls
    quorel_sweep shell startup sweep_calls text_ports type_table variables vlan)

bare=$1 binding=$2
shift 2
sources=$(cd "$(dirname "$0")/.." && pwd -P)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
root=$work/root
tried=/srv/tried  # in the root, what it is tried with

# inside COMMAND...: in the root, with processes and mounts of its own, which end with it.
inside() {
    # shellcheck disable=SC2016
    unshare --mount --pid --fork --kill-child sh -c '
        mount -t proc proc "$1/proc"
        mount --rbind /dev "$1/dev"
        cd /
        root=$1
        shift
        exec env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 HOME=/tmp chroot "$root" "$@"' sh "$root" "$@"
}

# as_user COMMAND...: in /tmp, as one who owns nothing there and may write nowhere else.
as_user() { inside sh -c 'cd /tmp && exec chroot --skip-chdir --userspec=nobody:nogroup / "$@"' sh "$@"; }

# listing: every file with its owner, mode and contents, but for what dpkg itself and its triggers write; each package
# with its state.
listing() {
    local elsewhere=(./proc ./dev ./tmp ./var/lib/dpkg ./var/log ./var/cache) path expression=(-false)
    for path in "${elsewhere[@]}"; do
        expression+=(-o -path "$path")
    done
    (
        cd "$root"
        find . \( "${expression[@]}" \) -prune -o -printf '%y %m %U:%G %p %l\n' | LC_ALL=C sort
        find . \( "${expression[@]}" \) -prune -o -type f -print0 | LC_ALL=C sort -z | xargs -0 sha256sum
    )
    inside dpkg-query --show --showformat='${Package} ${Version} ${Status}\n'
}

cp -a "$bare" "$root"
listing >"$work/before"

say "installing ${*##*/}"
mkdir "$root$tried"
cp "$@" "$root$tried"
inside sh -c "dpkg --install $tried/*.deb" >"$work/log" 2>&1 || { cat "$work/log" >&2; die 'they do not install'; }
mkdir -p "$root$tried/tests" "$root$tried/sdk"
cp "$sources"/tests/*.py "$root$tried/tests"
cp -r "$sources/examples" "$root$tried"
cp -r "$sources/sdk/include" "$root$tried/sdk"
cp "$binding" "$root$tried/binding.tsv"

as_user python2.7 -c 'import os, sys, _QuorelApiNew, _quorel, quorel
print("%s, Python %s" % (_QuorelApiNew.__file__, sys.version.split()[0]))
sys.exit(0 if _QuorelApiNew.__file__.startswith("/usr/lib/") else "not the installed one")'

say 'running the examples'
# A dump with faults, of which it tells; a report with findings.
as_user sh -euxc "cd $tried/examples
    python2.7 make_fdb_dump.py >/tmp/fdb.txt
    python2.7 load_fdb.py --down swp7 --forget 02:00:5e:0a:01:01 10 /tmp/fdb.txt >/tmp/loaded.txt
    grep -q . /tmp/loaded.txt
    python2.7 diagnose.py diagnose.config diagnose.rc >/tmp/report.txt || [ \$? -eq 1 ]
    grep -q . /tmp/report.txt" >"$work/log" 2>&1 || { cat "$work/log" >&2; die 'an example fails'; }

say "running ${#sample[@]} of the tests"
for name in "${sample[@]}"; do
    as_user env PYTHONPATH="$tried/tests" PYTHONDONTWRITEBYTECODE=1 QUOREL_BINDING="$tried/binding.tsv" \
        QUOREL_SDK_INCLUDE="$tried/sdk/include" python2.7 "$tried/tests/run.py" "test_$name" >"$work/log" 2>&1 ||
        { cat "$work/log" >&2; die "test_$name.py fails on Debian 11"; }
done

say 'removing the packages'
for package; do dpkg-deb --field "$package" Package; done >"$work/names"
rm -rf "${root:?}$tried"
# shellcheck disable=SC2046
inside dpkg --purge $(cat "$work/names") >"$work/log" 2>&1 || { cat "$work/log" >&2; die 'they cannot be removed'; }
listing >"$work/after"
diff "$work/before" "$work/after" >"$work/left" || { cat "$work/left" >&2; die 'this is left, or has changed'; }
say 'nothing is left'
