#!/usr/bin/python3
# Writes tests/data/statis_tails.txt and tests/data/statis_normal_tails.txt, once, with mpmath
# at 60 significant digits (the Mann-Whitney tails by exact counting). The tests read the
# tables; they never run this script. Values are printed with 20 significant digits.
#
# statis_tails.txt: one upper tail per line, "kind parameters... x tail":
#   chi2 df x P(X > x)         = gammainc(df/2, x/2, inf, regularized)
#   t df x P(T > x)            = betainc(df/2, 1/2, 0, df/(df + x^2), regularized)/2 for x > 0
#   f d1 d2 x P(F > x)         = betainc(d2/2, d1/2, 0, d2/(d2 + d1 x), regularized)
#   binom n p k P(X > k)       = betainc(k + 1, n - k, 0, p, regularized)
#   u n1 n2 u P(U > u)         exact count of the Mann-Whitney statistic
# statis_normal_tails.txt: "lower x Phi(x)", "upper x 1 - Phi(x)", "quantile p x" with
#   Phi(x) = p solved by Newton's method on ln mpmath.ncdf.
import os
from fractions import Fraction

import mpmath

mpmath.mp.dps = 60
HERE = os.path.dirname(os.path.abspath(__file__))


def s(v):
    return mpmath.nstr(mpmath.mpf(v), 20, min_fixed=-1, max_fixed=-1)


def u_upper(n1, n2, u):
    # number of arrangements with U = j by the recursion on the last element
    m, n = n1, n2
    from functools import lru_cache

    @lru_cache(maxsize=None)
    def count(a, b, j):
        if j < 0:
            return 0
        if a == 0 or b == 0:
            return 1 if j == 0 else 0
        return count(a - 1, b, j - b) + count(a, b - 1, j)

    total = sum(count(m, n, j) for j in range(m * n + 1))
    above = sum(count(m, n, j) for j in range(u + 1, m * n + 1))
    return Fraction(above, total)


rows = []
for df, x in [(3, 100), (1, 1e-10), (1, 3.84), (2, 700), (5, 0.5), (10, 1e3), (100, 150), (1000, 2000),
              (1000000, 1001000)]:
    rows.append(("chi2", df, x, mpmath.gammainc(mpmath.mpf(df) / 2, mpmath.mpf(x) / 2, mpmath.inf,
                                                regularized=True)))
for df, x in [(1, 1e10), (1, 0.5), (3, 30), (10, 2.228), (30, -2.0), (100, 8.0), (1000, 0.1), (5, 1e20)]:
    xm = mpmath.mpf(x)
    half = mpmath.betainc(mpmath.mpf(df) / 2, 0.5, 0, df / (df + xm * xm), regularized=True) / 2
    rows.append(("t", df, x, half if x > 0 else 1 - half))
for d1, d2, x in [(3, 7, 100), (1, 1, 1e8), (5, 10, 0.2), (10, 20, 3.0), (100, 100, 5.0), (2, 1000, 30.0)]:
    xm = mpmath.mpf(x)
    rows.append(("f", d1, d2, x, mpmath.betainc(mpmath.mpf(d2) / 2, mpmath.mpf(d1) / 2, 0,
                                                d2 / (d2 + d1 * xm), regularized=True)))
for n, p, k in [(100, 0.1, 60), (1000, 0.5, 900), (20, 0.3, 5), (50, 0.999, 49), (10, 0.5, 0), (1000000, 1e-6, 12)]:
    rows.append(("binom", n, p, k, mpmath.betainc(k + 1, n - k, 0, mpmath.mpf(p), regularized=True)))
for n1, n2, u in [(10, 12, 110), (10, 12, 60), (5, 5, 24), (8, 3, 0), (15, 15, 200)]:
    fr = u_upper(n1, n2, u)
    rows.append(("u", n1, n2, u, mpmath.mpf(fr.numerator) / fr.denominator))

with open(os.path.join(HERE, "statis_tails.txt"), "w") as f:
    f.write("# Upper tails: kind parameters... x tail (see statis_tails_reference.py; mpmath 60 digits)\n")
    for r in rows:
        f.write(" ".join(str(v) if not isinstance(v, mpmath.mpf) else s(v) for v in r[:-1]) + " " + s(r[-1]) + "\n")

xs = [-37.5, -37.0, -30.0, -20.0, -9.0, -8.0, -5.0, -1.5, -1e-3, -1e-20, 0.0, 1e-20, 0.3, 1.0, 2.5, 8.0,
      8.3, 10.0, 20.0, 37.0]
ps = [1e-300, 1e-200, 1e-100, 1e-50, 1e-20, 1e-10, 1e-5, 0.01, 0.2, 0.25, 0.3, 0.4999, 0.5 - 2 ** -54,
      0.5 + 2 ** -53, 0.6, 0.75, 0.9, 0.975, 0.999999, 1 - 1e-12, 1 - 1e-15, 1 - 2 ** -53 * 2]
with open(os.path.join(HERE, "statis_normal_tails.txt"), "w") as f:
    f.write("# Standard normal tails and quantiles (see statis_tails_reference.py; mpmath 60 digits)\n")
    for x in xs:
        f.write("lower %r %s\n" % (x, s(mpmath.ncdf(x))))
        f.write("upper %r %s\n" % (x, s(mpmath.ncdf(-mpmath.mpf(x)))))
    for p in ps:
        pm = mpmath.mpf(p)
        x0 = mpmath.sqrt(2) * mpmath.erfinv(2 * pm - 1) if 1e-15 < p < 1 - 1e-15 else None
        if x0 is None:
            x0 = -mpmath.sqrt(-2 * mpmath.log(min(p, 1 - p)))
            if p > 0.5:
                x0 = -x0
        x = x0
        for _ in range(200):  # Newton steps on ln Phi, quadratic from the start value
            x = x - (mpmath.log(mpmath.ncdf(x)) - mpmath.log(pm)) * mpmath.ncdf(x) / mpmath.npdf(x)
        f.write("quantile %r %s\n" % (p, s(x)))
