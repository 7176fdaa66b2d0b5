# Draws docs/pictures/performance.png from the tables in the folder `data`; tools/figures.sh calls it.
set terminal pngcairo size 1500,1560 font "Liberation Sans,15" background "#ffffff"
set output "docs/pictures/performance.png"
set datafile separator "\t"
set datafile missing "?"
ours = "#1f5fa8"
bare = "#9fb4c9"
other = "#d98324"
more = "#6b8e23"
set border 3 lc rgb "#555555"
set tics nomirror
set grid ytics lc rgb "#e0e0e0"
set multiplot

# The platform's own boxes, and its file dialog over as many files as our dialogs have.
box = system("awk -F'\t' '$1 == \"painted\" { print $3 }' " . data . "/boxes") + 0
task = system("awk -F'\t' '$1 == \"painted\" { print $4 }' " . data . "/boxes") + 0
file = system("head -n 1 " . data . "/files | cut -f 8") + 0

set size 1, 0.55
set origin 0, 0.45
set title "From the call to painted: each dialog beside its bare windows" font ",18"
set ylabel "ms"
set yrange [0:*]
set style fill solid noborder
set boxwidth 0.38
set key top left reverse Left
set xtics rotate by -30 scale 0
set xrange [-0.7:15.7]
set rmargin 12
plot data . "/dialogs" using ($0 - 0.2):3 with boxes lc rgb ours title "our dialog", \
     data . "/dialogs" using ($0 + 0.2):4:xtic(1) with boxes lc rgb bare title "its windows alone (bare twin)", \
     "+" using (13):(box):(0.6):xtic("MessageBoxW") every ::0::0 with boxes lc rgb other title "the platform's own dialogs", \
     "+" using (14):(task):(0.6):xtic("TaskDialogIndirect") every ::0::0 with boxes lc rgb other notitle, \
     "+" using (15):(file):(0.6):xtic("GetOpenFileNameW") every ::0::0 with boxes lc rgb other notitle

unset xrange
set xtics norotate autofreq scale 1
set size 0.5, 0.44
set rmargin 3
set grid xtics ytics lc rgb "#e0e0e0"
set key top left reverse Left
set logscale xy
set format x "%.0f"
set yrange [*:*]

set origin 0, 0
set title "KROpenFile over the number of files"
set xlabel "files"
set xrange [80:130000]
plot data . "/files" using 1:4 with linespoints lw 2 pt 7 lc rgb ours title "first rows", \
     data . "/files" using 1:5 with linespoints lw 2 pt 5 lc rgb more title "list complete", \
     data . "/files" using 1:2 with linespoints lw 2 pt 4 lc rgb bare title "bare enumeration", \
     data . "/files" using 1:8 with linespoints lw 2 pt 9 lc rgb other title "platform's dialog, first rows"

set origin 0.5, 0
set title "KRUser over the number of users"
set xlabel "users"
set xrange [0.8:14000]
set yrange [*:100000]
plot data . "/users" using 1:2 with linespoints lw 2 pt 7 lc rgb ours title "painted", \
     data . "/users" using 1:4 with linespoints lw 2 pt 5 lc rgb more title "without user management", \
     data . "/users" using 1:3 with linespoints lw 2 pt 9 lc rgb other title "user management", \
     data . "/users" using 1:5 with linespoints lw 2 pt 4 lc rgb bare title "its windows alone (bare twin)"
unset multiplot
