#!/bin/bash
# compare-readers.sh DWGREAD [ZELVORA-DWG [FOLDER [RUNS]]]: the time of a whole process that reads one drawing, by
# LibreDWG's dwgread and by zelvora-dwg info, as medians over all drawings of a folder, with the ratio.
set -u
root=$(cd "$(dirname "$0")/.." && pwd)
other=${1:?path of dwgread}
own=${2:-$root/build/release/bin/zelvora-dwg}
folder=${3:-$root/../shared/drawings}
runs=${4:-9}

# median COMMAND...: microseconds of one run.
median() {
    for ((run = 0; run < runs; ++run)); do
        local start=${EPOCHREALTIME/./}
        "$@" >/dev/null 2>&1
        echo $((${EPOCHREALTIME/./} - start))
    done | sort -n | sed -n "$(((runs + 1) / 2))p"
}

# A line for each drawing that both can read: version, size, own time, the other's time.
read_all() {
    find "$folder" -name '*.dwg' -not -path '*/older/*' | sort | while read -r file; do
        "$own" info "$file" >/dev/null 2>&1 && "$other" -v0 "$file" >/dev/null 2>&1 || continue
        echo "$(head -c 6 "$file") $(stat -c %s "$file") $(median "$own" info "$file") $(median "$other" -v0 "$file")"
    done
}

echo "load $(cut -d' ' -f1 /proc/loadavg), medians of $runs runs for each drawing, in milliseconds"
echo "a process that does nothing: $(median /bin/true) microseconds"
read_all | sort | awk '
    function middle(values, count,    i, j, t) {
        for (i = 2; i <= count; ++i)
            for (j = i; j > 1 && values[j] < values[j - 1]; --j) { t = values[j]; values[j] = values[j - 1]; values[j - 1] = t }
        return values[int((count + 1) / 2)]
    }
    function line(name, own, other, count) {
        a = middle(own, count) / 1000; b = middle(other, count) / 1000
        printf "%-8s %4d %12.1f %10.1f %8.1f\n", name, count, a, b, b / a
    }
    BEGIN { printf "%-8s %4s %12s %10s %8s\n", "version", "", "zelvora-dwg", "dwgread", "ratio" }
    $1 != version { if (n) line(version, x, y, n); n = 0; version = $1 }
    { ++n; x[n] = $3; y[n] = $4; ++m; all_x[m] = $3; all_y[m] = $4 }
    $2 >= 400000 { ++k; large_x[k] = $3; large_y[k] = $4 }
    END {
        if (n) line(version, x, y, n)
        if (k) line("0.4 MB+", large_x, large_y, k)
        if (m) line("all", all_x, all_y, m)
    }'
