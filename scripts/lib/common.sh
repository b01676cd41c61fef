# Shared by the scripts: strict mode, step lines, and installing packages. Sourced, never run; changes to the root
# folder of the project.

set -Eeuo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

current_step="starting"
trap 'printf "\n*** Stopped while %s.\n" "$current_step" >&2' ERR

# newest TOOL [VERSION]: the command of a tool that distributions provide in several versions, such as clang++ or
# clang-format: the newest one installed, or exactly VERSION. Fails if there is none.
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

# step WHAT: prints the name of the next step. WHAT must fit after "Stopped while".
step() {
    current_step=$1
    printf '\n==> %s\n' "$1"
}

# wait_for PROCESS...: waits for background processes; fails if one of them does.
wait_for() {
    local process
    for process in "$@"; do
        wait "$process"
    done
}

# is_there PROBE: whether a command, a <header> or a /path exists, or a Python "import MODULE" works.
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

# is_debian VERSION...: whether the system is one of these releases of Debian; "development" is the next one, which has
# no number yet.
is_debian() {
    [[ -r /etc/os-release ]] &&
        (. /etc/os-release && [[ ${ID-} == debian && " $* " == *" ${VERSION_ID-development} "* ]])
}

source scripts/lib/packages.sh

# can_install: whether the packages of packages.sh are those of this system.
can_install() {
    is_debian 12 13 development
}

# require_packages LINE...: installs missing packages as root on Debian; elsewhere, lists them and exits.
require_packages() {
    local line package probe missing=()
    for line in "$@"; do
        read -r package probe <<<"$line"
        is_there "$probe" || missing+=("$package")
    done
    ((${#missing[@]})) || return 0

    if can_install && ((EUID == 0)); then
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
    printf 'Missing packages, by their Debian names:\n\n    %s\n\n' "$*" >&2
    if can_install; then
        printf 'Run this script as root, or install them first:\n\n    sudo apt-get install %s\n' "$*"
    elif command -v apt-get >/dev/null; then
        printf 'This is not Debian 12, 13 or the next one, so nothing was installed. If your system uses the same names:\n'
        printf '\n    sudo apt-get install %s\n' "$*"
    else
        printf 'This is not Debian 12, 13 or the next one, so nothing was installed. Install the equivalent\n'
        printf 'packages of your system, then run this script again.\n'
    fi >&2
}
