# shellcheck shell=bash
# The figures of docs/performance.md and the picture drawn from them; sourced after lib.sh.

document=docs/performance.md
begin_mark='<!-- measured -->'
end_mark='<!-- end of measured -->'

# write_figures FILE: puts what was measured between the marks of the document.
write_figures() {
  local text
  text=$(awk -v begin="$begin_mark" -v end="$end_mark" -v figures="$1" '
    $0 == end { skipped = 0 }
    !skipped { print }
    $0 == begin { skipped = 1; while ((getline line < figures) > 0) print line }' "$document")
  printf '%s\n' "$text" > "$document"
}

# table TITLE: the rows of the document's table whose first column has this title, cells parted by tabs;
# what has no figure gets a question mark.
table() {
  awk -F ' *[|] *' -v title="$1" '
    NF < 3 { found = 0 }
    found > 1 { row = $2; for (i = 3; i < NF; ++i) row = row "\t" ($i == "" ? "?" : $i); print row }
    found == 1 { found = 2 }
    $2 == title { found = 1 }' "$document"
}

# draw_picture: all of it in one image.
draw_picture() {
  local data=build/bench/picture
  tools/setup --figures
  rm -rf "$data"
  mkdir -p "$data"
  table 'dialog and its bare twin' > "$data/dialogs"
  table ms > "$data/boxes"
  table files > "$data/files"
  table users > "$data/users"
  local file
  for file in dialogs boxes files users; do
    [[ -s $data/$file ]] || { echo "$document has no figures for $file" >&2; return 1; }
  done
  gnuplot -e "data='$data'" tools/performance.gnuplot
}
