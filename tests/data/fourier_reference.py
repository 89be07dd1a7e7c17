#!/usr/bin/python3
# Writes the reference tables tests/data/fourier_*.txt, once. The tests read the tables; they
# never run this script.
#   fourier_windows.txt   window weights from their defining formulas, evaluated in 40-digit
#                         decimal arithmetic (Taylor series for cos and exp), printed with 17
#                         significant digits.
#   fourier_spectra.txt   transforms of fixed test signals by numpy.fft (NumPy 1.24, double,
#                         relative precision about 1e-15 of the largest line); the forward
#                         transform of this library uses the positive exponent, so a line is
#                         n * numpy.fft.ifft(x)[k].
import math
import os
from decimal import Decimal, getcontext

import numpy as np

getcontext().prec = 40
HERE = os.path.dirname(os.path.abspath(__file__))
PI = Decimal("3.141592653589793238462643383279502884197169")


def dcos(x):
    x = x % (2 * PI)
    term, total, k = Decimal(1), Decimal(1), 0
    while abs(term) > Decimal("1e-45"):
        k += 2
        term = -term * x * x / (k * (k - 1))
        total += term
    return total


def dexp(x):
    term, total, k = Decimal(1), Decimal(1), 0
    while abs(term) > Decimal("1e-45"):
        k += 1
        term = term * x / k
        total += term
    return total


def cosine_sum(t, a):
    return sum(Decimal(c) * dcos(2 * j * PI * t) for j, c in enumerate(a))


def weight(window, i, n, alpha):
    i, N = Decimal(i), Decimal(n)
    t = (i - N / 2) / N
    if window == "triangle":
        half = n // 2
        if i <= half:
            return 2 * i / N
        mirror = N + 1 - i
        return 2 * mirror / N if mirror <= half else Decimal(1)
    if window == "cos2":
        return dcos(PI * t) ** 2
    if window == "gauss":
        z = 3 * (i - N / 2) / (N / 2)
        return dexp(-z * z / 2)
    if window == "hamming":
        return cosine_sum(t, ["0.543478261", "0.456521739"])
    if window == "blackman":
        return cosine_sum(t, ["0.42659", "0.49656", "0.076848"])
    if window == "blkmharris":
        return cosine_sum(t, ["0.35875", "0.48829", "0.14128", "0.01168"])
    if window == "blkmnuttall":
        return cosine_sum(t, ["0.3635819", "0.4891775", "0.1365995", "0.0106411"])
    if window == "tukey":
        a = Decimal(alpha)
        if a * N / 2 <= i <= N - a * N / 2:
            return Decimal(1)
        return (1 - dcos(2 * PI * i / (a * N))) / 2
    raise ValueError(window)


def windows():
    rows = []
    for name in ["triangle", "cos2", "gauss", "hamming", "blackman", "blkmharris",
                 "blkmnuttall"]:
        for n in [8, 256, 4096]:
            for i in sorted({1, n // 2, n // 2 + 1, n}):
                rows.append((name, n, "0", i, weight(name, i, n, 0)))
    for alpha in ["0.3", "0.5", "1"]:
        for n in [8, 256, 4096]:
            for i in sorted({1, 2, n // 2, n - 1, n}):
                rows.append(("tukey", n, alpha, i, weight("tukey", i, n, alpha)))
    with open(os.path.join(HERE, "fourier_windows.txt"), "w") as f:
        f.write("# Window weights: window N alpha i weight (i 1-based)\n")
        f.write("# weights from the defining formulas in 40-digit decimals, written by\n")
        f.write("# fourier_reference.py; exact to the 17 digits printed\n")
        for r in rows:
            f.write("%s %d %s %d %s\n" % (r[0], r[1], r[2], r[3], "%.17g" % float(r[4])))


def signal(n):
    k = np.arange(n, dtype=float)
    return np.sin(0.37 * k) + 0.25 * np.cos(0.05 * k * k), 0.5 * np.cos(1.3 * k)


def spectra():
    with open(os.path.join(HERE, "fourier_spectra.txt"), "w") as f:
        f.write("# Forward transforms (positive exponent) of the test signal\n")
        f.write("#   re_k = sin(0.37 k) + 0.25 cos(0.05 k^2), im_k = 0.5 cos(1.3 k), k = 0..n-1\n")
        f.write("# as n * numpy.fft.ifft (NumPy 1.24, double) by fourier_reference.py.\n")
        f.write("# Rows 'c n k re im' are complex input; rows 'r n L power' the one-sided power\n")
        f.write("# (|X_L|^2 + |X_(n-L)|^2)/n (|X_0|^2/n at L = 0) of the real part alone.\n")
        for n in [8, 32, 12, 100]:
            re, im = signal(n)
            x = n * np.fft.ifft(re + 1j * im)
            for k in range(n):
                f.write("c %d %d %r %r\n" % (n, k, float(x[k].real), float(x[k].imag)))
            xr = n * np.fft.ifft(re)
            for L in range(n // 2 + 1):
                p = abs(xr[L]) ** 2 if L == 0 else abs(xr[L]) ** 2 + abs(xr[(n - L) % n]) ** 2
                f.write("r %d %d %r\n" % (n, L, float(p / n)))


windows()
spectra()
