#!/usr/bin/env bash
# compile_headers.sh Alone|Together FOLDER COMPILER FLAG...: compiles the headers below an include folder, each by
# itself or all at once, including each twice. Exits with 77 if the compiler does not exist.

set -euo pipefail
how=$1
folder=$2
compiler=("${@:3}" -I"$folder" -fsyntax-only -x c++ -)

if ! "${compiler[@]}" <<<"#include <version>" &>/dev/null; then
    printf 'Skipped: %s does not work here.\n' "${compiler[*]:0:2}"
    exit 77
fi

mapfile -t headers < <(find "$folder" -name '*.hpp' -printf '%P\n' | sort)
((${#headers[@]})) || { printf 'no header in %s\n' "$folder"; exit 1; }

if [[ $how == Together ]]; then
    printf '#include <%s>\n' "${headers[@]}" "${headers[@]}" | "${compiler[@]}"
    exit
fi

failures=0
for header in "${headers[@]}"; do
    printf '#include <%s>\n' "$header" "$header" | "${compiler[@]}" || {
        printf 'does not compile alone: %s\n\n' "$header"
        failures=$((failures + 1))
    }
done
((failures == 0))
