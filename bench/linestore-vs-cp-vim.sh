#!/usr/bin/env bash
# The line store's load-and-save speed and memory against cp and vim
# (the line store's speed goal, checked here and never in the unit tests).
#
# Generates a ~50 MB, 1,000,000-line C-like file under /tmp, then runs side
# by side, RUNS times each (default 5), on the same file:
#   cp FILE OUT
#   vim -u NONE -N -es -c 'w! OUT' -c 'q!' FILE
#   zorfa-cli lines FILE --out OUT
# and prints the best and median wall times, the ratios to cp and vim, and
# the peak resident set size (GNU time's "Maximum resident set size").
# Goal: zorfa-cli's time at most 5 x cp's and below vim's; its peak RSS under
# 4 x the file's size.
#
# Needs /usr/bin/time (Debian package `time`) and vim; installs them when
# missing (apt-get, as root).
#
# Usage: bench/linestore-vs-cp-vim.sh [RUNS] [crlf|lf]
#   RUNS: timed runs of each command (default 5)
#   crlf (default): the file has CR LF breaks, as the saved file does, so the
#     save copies runs of untouched lines at once; lf: the file has LF breaks
#     and every line is copied by itself with a new break.
#   ZORFA_CLI=path overrides the binary.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
runs=${1:-5}
filebreak=${2:-crlf}
case $filebreak in crlf) eol='\r\n';; lf) eol='\n';; *) echo "usage: $0 [RUNS] [crlf|lf]" >&2; exit 2;; esac
cli=${ZORFA_CLI:-$root/build/bin/zorfa-cli}

need=()
[ -x /usr/bin/time ] || need+=(time)
command -v vim >/dev/null || need+=(vim)
if ((${#need[@]})); then
  echo "Installing: ${need[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq && apt-get install -y -qq --no-install-recommends "${need[@]}"
fi
if [ ! -x "$cli" ]; then
  echo "building zorfa-cli"
  "$root/scripts/build.sh" >/dev/null
fi

work=$(mktemp -d /tmp/linestore-bench.XXXXXX)
trap 'rm -rf "$work"' EXIT
src=$work/source.c

# 1,000,000 lines of C-like text of varied length, about 50 bytes a line on
# average, CR LF breaks as a Windows source file has (or LF); deterministic.
awk -v eol="$eol" 'BEGIN {
  srand(20241122);
  split("int|char|unsigned long|static void|const char *|struct node *|size_t|double", types, "|");
  split("count|buffer|index|length|result|node|value|offset|state|cursor|limit|table", names, "|");
  split("if (%s > %d) {|for (i = 0; i < %s; ++i) {|return %s + %d;|%s = %s(%s, %d);|/* %s: %d */|} else {|while (%s-- != %d)|#define %s_%d %d|}|case %d: %s = %d; break;", forms, "|");
  for (n = 0; n < 1000000; n++) {
    depth = int(rand() * 6); indent = "";
    for (d = 0; d < depth; d++) indent = indent "    ";
    a = names[int(rand() * 12) + 1]; b = names[int(rand() * 12) + 1]; k = int(rand() * 100000);
    f = int(rand() * 13);
    if (f < 10) line = sprintf(forms[f + 1], a, k, b, k);
    else if (f == 10) line = sprintf("%s %s_%s = %d; // %s of the %s", types[int(rand() * 8) + 1], a, b, k, a, b);
    else if (f == 11) line = "";
    else line = sprintf("%s %s(%s %s, %s %s, int %s_%d);", types[int(rand() * 8) + 1], a, types[int(rand() * 8) + 1], b, types[int(rand() * 8) + 1], a, b, k);
    c = int(rand() * 3);
    if (line != "" && c == 0) line = line " // " a " must stay below " b;
    else if (line != "" && c == 1) line = line " /* see " names[int(rand() * 12) + 1] " */";
    printf "%s%s%s", indent, line, eol;
  }
}' > "$src"
size=$(stat -c %s "$src")
lines=$("$cli" lines "$src" --count)
echo "file: $src, $size bytes, $lines lines, $filebreak breaks"
cat "$src" > /dev/null  # in the page cache for everyone

cmd_cp=(cp "$src" "$work/out")
cmd_vim=(vim -u NONE -N -es -c "w! $work/out" -c 'q!' "$src")
cmd_zorfa=("$cli" lines "$src" --out "$work/out")
run_cmd() {  # run_cmd NAME [PREFIX...]: runs the command NAME, after PREFIX
  local name=$1; shift
  local -n cmd="cmd_$name"
  "$@" "${cmd[@]}" >/dev/null 2>&1
}

# Interleaved rounds: each round runs all three, so a slow moment of the
# machine hits all alike. Wall time in microseconds from date(1).
declare -A walls
for ((r = 0; r < runs; r++)); do
  for name in cp vim zorfa; do
    rm -f "$work/out"; sync
    t0=$(date +%s%N); run_cmd "$name"; t1=$(date +%s%N)
    walls[$name]+="$(( (t1 - t0) / 1000 )) "
  done
done
# Peak RSS, one run each under GNU time.
declare -A peak
for name in cp vim zorfa; do
  rm -f "$work/out"
  run_cmd "$name" /usr/bin/time -v -o "$work/time"
  peak[$name]=$(awk -F': ' '/Maximum resident set size/ { print $2 }' "$work/time")
done
"$cli" lines "$src" --out "$work/out"
if [ "$filebreak" = crlf ]; then expect=$src; else expect=$work/expect; sed 's/$/\r/' "$src" > "$expect"; fi
if cmp -s "$work/out" "$expect"; then echo "saved file: the expected bytes"; else echo "saved file: DIFFERENT bytes"; fi

stat_of() {  # stat_of NAME best|median
  local sorted; sorted=$(printf '%s\n' ${walls[$1]} | sort -n)
  if [ "$2" = best ]; then echo "$sorted" | head -1; else echo "$sorted" | sed -n "$(( (runs + 1) / 2 ))p"; fi
}
ms() { awk -v us="$1" 'BEGIN { printf "%.1f ms", us / 1000 }'; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }

echo "runs: $runs each, interleaved"
printf '%-6s %12s %12s %14s\n' what best median "peak RSS"
for name in cp vim zorfa; do
  printf '%-6s %12s %12s %11s KB\n' "$name" "$(ms "$(stat_of $name best)")" "$(ms "$(stat_of $name median)")" "${peak[$name]}"
done
zb=$(stat_of zorfa best); zm=$(stat_of zorfa median)
echo "zorfa / cp : best $(ratio "$zb" "$(stat_of cp best)"), median $(ratio "$zm" "$(stat_of cp median)")   (goal <= 5)"
echo "zorfa / vim: best $(ratio "$zb" "$(stat_of vim best)"), median $(ratio "$zm" "$(stat_of vim median)")   (goal < 1)"
echo "zorfa peak RSS / file size: $(ratio "$(( ${peak[zorfa]} * 1024 ))" "$size")   (goal < 4)"
