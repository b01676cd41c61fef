# What the scripts share: strict mode, step lines, and installing packages. Sourced, never run; leaves the
# caller in the root folder of the project.

set -Eeuo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

current_step="starting"
trap 'printf "\n*** Stopped while %s.\n" "$current_step" >&2' ERR

# newest TOOL [VERSION]: the command of a tool that distributions have in several versions, clang++ or clang-format: the
# highest that is here, or that very VERSION. Fails where there is none.
newest() {
    local found
    found=$({
        command -v "$1"
        compgen -c "$1-" | grep -xE "${1//+/[+]}-[0-9]+" | sort --version-sort
    } | tail -n 1) || true
    [[ $found ]] || return
    if [[ ${2-} && $found != "$1-$2" ]]; then
        found=$(command -v "$1-$2") || return
    fi
    printf '%s\n' "$found"
}

# step WHAT: says what happens next; WHAT reads well after "Stopped while".
step() {
    current_step=$1
    printf '\n==> %s\n' "$1"
}

# is_there PROBE: whether a command can be run, a <header> be included or a /path be found.
is_there() {
    case $1 in
        "<"*) g++ -E -x c++ - <<<"#if !__has_include($1)
#error
#endif" ;;
        /*) [[ -e $1 ]] ;;
        "import "*) /usr/bin/python3 -c "$1" ;;
        *) command -v "$1" ;;
    esac &>/dev/null
}

# is_debian VERSION...: whether this is one of these releases of Debian.
is_debian() {
    [[ -r /etc/os-release ]] && (. /etc/os-release && [[ ${ID-} == debian && " $* " == *" ${VERSION_ID-none} "* ]])
}

source scripts/lib/packages.sh

# require_packages LINE...: makes sure that each package is there, by installing it where that is ours to do.
require_packages() {
    local line package probe missing=()
    for line in "$@"; do
        read -r package probe <<<"$line"
        is_there "$probe" || missing+=("$package")
    done
    ((${#missing[@]})) || return 0

    if is_debian 12 13 && ((EUID == 0)); then
        step "installing ${missing[*]}"
        export DEBIAN_FRONTEND=noninteractive
        apt-get -qq update
        apt-get -qq install -y --no-install-recommends "${missing[@]}" </dev/null >/dev/null
    else
        explain_missing "${missing[@]}"
        exit 1
    fi
}

explain_missing() {
    printf 'Missing on this machine, by the names of Debian:\n\n    %s\n\n' "$*" >&2
    if is_debian 12 13; then
        printf 'Run this script as root, or install them first:\n\n    sudo apt-get install %s\n' "$*"
    elif command -v apt-get >/dev/null; then
        printf 'This is neither Debian 12 nor 13, so nothing is installed for you. Where the names are the same:\n'
        printf '\n    sudo apt-get install %s\n' "$*"
    else
        printf 'This is neither Debian 12 nor 13, so nothing is installed for you. Install what your system calls\n'
        printf 'them with its own package manager, then run this script again.\n'
    fi >&2
}
