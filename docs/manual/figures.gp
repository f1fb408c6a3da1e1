# Draws the figures of the manual from what figures.c has written and from recorded ratios:
# gnuplot -e "dir='...'; ratios='...'" figures.gp
# SPDX-License-Identifier: MIT
set terminal svg size 760,420 dynamic font "sans-serif,13" background "white"
set grid lc rgb "#d0d0d0"
set key outside right top width -2
set style line 1 lc rgb "#1f77b4" lw 1.6
set style line 2 lc rgb "#d62728" lw 1.6
set style line 3 lc rgb "#2ca02c" lw 1.6
set style line 4 lc rgb "#9467bd" lw 1.6
set style line 5 lc rgb "#ff7f0e" lw 1.6
set style line 6 lc rgb "#8c564b" lw 1.6
set style line 7 lc rgb "#e377c2" lw 1.6
set style line 8 lc rgb "#17becf" lw 1.6
file(name) = dir . "/" . name . ".dat"

array window[6] = ["Bartlett", "Hann", "Hamming", "BlackmanStd", "BlackmanOpt", "Kaiser, 9"]
set output dir . "/windows.svg"
set xlabel "sample"
set xrange [0:64]
set yrange [0:1.02]
plot for [k = 1:6] file("windows") using 1:k+1 with lines ls k title window[k]

set output dir . "/spectra.svg"
set xlabel "frequency in bins"
set ylabel "dB"
set xrange [0:16]
set yrange [-120:5]
plot for [k = 1:6] file("spectra") using 1:k+1 with lines ls k title window[k]

array fir[5] = ["no window", "Bartlett", "Hann", "Hamming", "BlackmanOpt"]
set output dir . "/fir.svg"
set xlabel "frequency over the sampling rate"
set xrange [0:0.5]
set yrange [-120:5]
plot for [k = 1:5] file("fir") using 1:k+1 with lines ls k title fir[k]

array iir[5] = ["Butterworth 2", "Butterworth 4", "Butterworth 8", "Chebyshev 4", "Chebyshev 8"]
set output dir . "/iir.svg"
set yrange [-100:5]
plot for [k = 1:5] file("iir") using 1:k+1 with lines ls k title iir[k]

set output dir . "/fft.svg"
set xlabel "order: the logarithm of the length to base 2"
set ylabel "root mean square error in eps"
set xrange [2:16]
set yrange [0:1.5]
plot file("fft") using 1:2 with linespoints ls 1 pt 7 ps 0.5 title "32fc", \
     file("fft") using 1:3 with linespoints ls 2 pt 7 ps 0.5 title "64fc", \
     0.3 * sqrt(x) with lines lc rgb "#808080" dt 2 title "0.3 sqrt(order)"

set ylabel "largest error in units in the last place"
set autoscale
set yrange [0:*]
unset key
array name[5] = ["exponential", "logarithm", "arctan", "sqrt", "cubrt"]
array argument[5] = ["argument", "logarithm of the argument to base 2", "argument", \
  "logarithm of the argument to base 2", "logarithm of the argument to base 2"]
do for [k = 1:5] {
  set output dir . "/" . name[k] . ".svg"
  set xlabel argument[k]
  plot file(name[k]) using 1:2 with lines ls 1
}

# Curves of a file of ratios, told by their peers: a regular expression of awk.
curves(peers) = system("awk '!/^#/ && $2 ~ /" . peers . "/ && !seen[$1, $2]++ {print $1 \",\" $2}' " . ratios)
part(curve, k) = curve[k == 1 ? 1 : strstrt(curve, ",") + 1 : k == 1 ? strstrt(curve, ",") - 1 : strlen(curve)]
rows(curve) = sprintf("< awk '$1 == \"%s\" && $2 == \"%s\"' %s", part(curve, 1), part(curve, 2), ratios)
measured = system("sed -n 's/^# \\(Measured .*\\)/\\1/p' " . ratios)
array peers[2] = ["^loop$", "^[^l]"]
array drawing[2] = ["ratios_loops", "ratios_libraries"]
set title measured font ",10" noenhanced
set key noenhanced
set xlabel "length"
set ylabel "time of the peer over the time of kvrs"
set logscale xy 2
set xrange [16:1048576]
set yrange [0.5:*]
set xtics ("16" 16, "64" 64, "256" 256, "1Ki" 1024, "4Ki" 4096, "16Ki" 16384, "64Ki" 65536, "256Ki" 262144, "1Mi" 1048576)
do for [k = 1:2] {
  set output dir . "/" . drawing[k] . ".svg"
  plot for [i = 1:words(curves(peers[k]))] rows(word(curves(peers[k]), i)) using 3:4 with linespoints ls i pt 7 ps 0.3 \
    title part(word(curves(peers[k]), i), 1) . (k == 1 ? "" : ", " . part(word(curves(peers[k]), i), 2)), \
    1 with lines lc rgb "#808080" dt 2 notitle
}
