# What the tools have in common; each reads it first, with its own arguments:
#   . "$(dirname "$0")/common.sh"
# The comment at the top of a tool is its help; its first line is the usage. --help prints it. Options are those that
# the usage names; another is refused before the tool begins.

say() { printf '%s: %s\n' "${0##*/}" "$*" >&2; }
die() { say "$*"; exit 1; }

tool_help() { sed -n '2,/^[^#]/{/^#/s/^# \{0,1\}//p}' "$0"; }

refuse() {
    [ $# -eq 0 ] || say "$*"
    printf 'usage: %s\n' "$(tool_help | head -n 1)" >&2
    exit 2
}

# Presets that can be built are those of CMakePresets.json.
require_preset() {
    grep -qF "{\"name\": \"$1\", \"configurePreset\"" CMakePresets.json || refuse "there is no preset '$1'"
}

# keep_configuration PRESET: whatever the tool makes of build/PRESET, it is configured as it is now when the tool ends or
# calls restore_configuration, so that its tests are there and `cmake --install` puts things where it did. Where nothing
# is built yet nothing is kept.
keep_configuration() {
    local cache=build/$1/CMakeCache.txt
    kept_preset=$1 kept=()
    [ ! -e "$cache" ] || mapfile -t kept < <(
        sed -nE 's/^(BUILD_TESTING|QUOREL_PYTHON_SITE_DIR|QUOREL_GENERATOR):[A-Z]+=/-D\1=/p' "$cache")
    trap restore_configuration EXIT
}

restore_configuration() {
    trap - EXIT
    [ ${#kept[@]} -eq 0 ] || cmake --preset "$kept_preset" "${kept[@]}" >/dev/null
}

for argument in "$@"; do
    case $argument in
        -h | --help) tool_help; exit 0 ;;
        --) break ;;
        -*)
            option=${argument%%=*}
            case $argument in -D?*=*) option=-DNAME ;; esac
            tool_help | head -n 1 | tr '[]| ' '\n' | cut -d= -f1 | grep -qxF -e "$option" ||
                refuse "there is no option ${argument%%=*}"
            ;;
    esac
done
unset argument option
