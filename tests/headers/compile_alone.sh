#!/usr/bin/env bash
# compile_alone.sh FOLDER COMPILER FLAG...: compiles each header below an include folder by itself, included twice.
# Exit status 77 where there is no such compiler.

set -euo pipefail
folder=$1
compiler=("${@:2}" -I"$folder" -fsyntax-only -x c++ -)

if ! "${compiler[@]}" <<<"#include <version>" &>/dev/null; then
    printf 'Skipped: %s does not work here.\n' "${compiler[*]:0:2}"
    exit 77
fi

mapfile -t headers < <(find "$folder" -name '*.hpp' -printf '%P\n' | sort)
((${#headers[@]})) || { printf 'no header in %s\n' "$folder"; exit 1; }

failures=0
for header in "${headers[@]}"; do
    printf '#include <%s>\n' "$header" "$header" | "${compiler[@]}" || {
        printf 'does not compile alone: %s\n\n' "$header"
        failures=$((failures + 1))
    }
done
((failures == 0))
