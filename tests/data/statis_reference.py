#!/usr/bin/python3
# Writes the reference tables tests/data/statis_*.txt, once, with SciPy 1.10 (and exact integer
# arithmetic for the Mann-Whitney U distribution). The tests read the tables; they never run
# this script. Values are printed with 17 significant digits.
import math
import os
from decimal import Decimal, getcontext
from fractions import Fraction

import numpy as np
from scipy import optimize, stats

HERE = os.path.dirname(os.path.abspath(__file__))
DFS = [1, 2, 3, 5, 10, 30, 100, 1000, 10000, 100000, 1000000]
P_GRID = [1e-300, 1e-100, 1e-20, 1e-5, 0.01, 0.3, 0.5, 0.9, 0.999, 1 - 1e-12]


def fmt(v):
    return repr(float(v)) if isinstance(v, (float, np.floating)) else str(v)


def write(name, header, rows):
    with open(os.path.join(HERE, name), "w") as f:
        for line in header:
            f.write("# " + line + "\n")
        for r in rows:
            f.write(" ".join(fmt(v) for v in r) + "\n")


def solve_x(logtail, target, lo, hi, points=600):
    """x with logtail(x) = ln(target), bracketed in ln x, to full double precision."""
    g = lambda u: logtail(math.exp(u)) - math.log(target)
    # Scan a grid in ln x for a finite bracket, then refine it.
    grid = np.linspace(math.log(lo), math.log(hi), points)
    vals = [g(u) for u in grid]
    for a, b, ga, gb in zip(grid, grid[1:], vals, vals[1:]):
        if np.isfinite(ga) and np.isfinite(gb) and (ga == 0 or ga * gb < 0):
            u = optimize.brentq(g, a, b, xtol=1e-15, rtol=8.9e-16, maxiter=500)
            return math.exp(u)
    raise ValueError("no bracket")


# ---- closed forms in 400-digit decimal arithmetic where SciPy loses digits (large degrees) --
getcontext().prec = 400
getcontext().Emax = 10**9
getcontext().Emin = -10**9
PI = Decimal("3.14159265358979323846264338327950288419716939937510582097494459230781640628620899"
             "86280348253421170679821480865132823066470938446095505822317253594081284811174502"
             "84102701938521105559644622948954930381964428810975665933446128475648233786783165"
             "27120190914564856692346034861045432664821339360726024914127372458700660631558817"
             "48815209209628292540917153643678925903600113305305488204665213841469519415116094")


def atan_small(z):
    """atan(z) for 0 <= z <= 1 by argument halving and the alternating series."""
    halvings = 0
    while z > Decimal("0.1"):
        z = z / (1 + (1 + z * z).sqrt())
        halvings += 1
    term, total, k, z2 = z, z, 0, z * z
    while abs(term) > Decimal(10) ** -410:
        k += 1
        term = -term * z2
        total += term / (2 * k + 1)
    return total * (2 ** halvings)


def beta_sum(a, b, x, y):
    """I_x(a, b) for a whole number b: x^a sum_(j<b) Gamma(a+j)/(Gamma(a) j!) y^j."""
    total, coef, power = Decimal(0), Decimal(1), Decimal(1)
    for j in range(int(b)):
        if j > 0:
            coef = coef * (a + j - 1) / j
            power *= y
        total += coef * power
    return (a * x.ln()).exp() * total


def beta_fn(a, b):
    """B(a, b) where b (or a) is a whole number: (b-1)! / prod_(j<b) (a+j)."""
    if b != int(b):
        a, b = b, a
    r = 1 / a
    for j in range(1, int(b)):
        r = r * j / (a + j)
    return r


def f_exact(x, m, n):
    """(cdf, sf, pdf) of F(m, n) at x in decimal, or None when no closed form is cheap."""
    X, M, N = Decimal(x), Decimal(m), Decimal(n)
    z, w = M * X / (M * X + N), N / (M * X + N)
    a, b = M / 2, N / 2
    if m == 1 and n == 1:
        t = 1 / X.sqrt() if X > 1 else X.sqrt()
        at = atan_small(t)
        small = 2 * at / PI
        cdf, sf = (1 - small, small) if X > 1 else (small, 1 - small)
        return cdf, sf, (X ** Decimal("-0.5")) / ((1 + X) * PI)
    if n % 2 == 0 and n // 2 <= 2000:
        cdf = beta_sum(a, b, z, w)
        sf = 1 - cdf
    elif m % 2 == 0 and m // 2 <= 2000:
        sf = beta_sum(b, a, w, z)
        cdf = 1 - sf
    else:
        return None
    if m % 2 == 0 or n % 2 == 0:
        pdf = ((a * (M / N).ln() + (a - 1) * X.ln() - (a + b) * (1 + M * X / N).ln()).exp()
               / beta_fn(a, b))
    else:
        return None
    return cdf, sf, pdf


def t_pdf_even(x, df):
    """t density for even df: a prod_(j<=a) (2j-1)/(2j) / sqrt(2a) (1 + x^2/df)^(-(df+1)/2)."""
    getcontext().prec = 40
    a = df // 2
    r = Decimal(1)
    for j in range(1, a + 1):
        r = r * (2 * j - 1) / (2 * j)
    X, V = Decimal(x), Decimal(df)
    out = a * r / Decimal(2 * a).sqrt() * ((-(V + 1) / 2) * (1 + X * X / V).ln()).exp()
    getcontext().prec = 400
    return out


def positive_quantile(dist, p, lo=1e-300, hi=1e300):
    if p < 0.5:
        return solve_x(lambda x: dist.logcdf(x), p, lo, hi)
    return solve_x(lambda x: dist.logsf(x), 1 - p, lo, hi)


# ---- chi-square --------------------------------------------------------------------------
rows, qrows = [], []
for df in DFS:
    d = stats.chi2(df)
    for p in P_GRID:
        try:
            x = positive_quantile(d, p)
        except ValueError:
            continue
        if x < 1e-300:
            continue
        rows.append((df, x, d.cdf(x), d.pdf(x)))
    for p in [1e-300, 1e-100, 1e-12, 1e-3, 0.05, 0.5, 0.95, 1 - 1e-12, 1 - 1e-16]:
        try:
            x = positive_quantile(d, p)
        except ValueError:
            continue
        if x >= 1e-300:
            qrows.append((df, p, x))
write("statis_chi2.txt", [
    "Chi-square distribution: DegFree x cdf pdf",
    "cdf = scipy.stats.chi2.cdf(x, df), pdf = scipy.stats.chi2.pdf(x, df) (SciPy 1.10, double)",
    "x = roots of chi2.logcdf/logsf = ln p (brentq in ln x) for p in 1e-300 .. 1-1e-12",
    "generated by statis_reference.py; relative precision of SciPy about 1e-14"], rows)
write("statis_chi2_quantile.txt", [
    "Chi-square quantiles: DegFree p x",
    "x solves scipy.stats.chi2.logcdf(x, df) = ln p (p < 0.5) or logsf(x, df) = ln(1-p),",
    "brentq in ln x with xtol 1e-15 (SciPy 1.10); generated by statis_reference.py"], qrows)

# ---- t -----------------------------------------------------------------------------------
rows, qrows = [], []
for df in DFS:
    d = stats.t(df)
    upper = lambda x: d.logsf(x)
    for p in [1e-300, 1e-100, 1e-20, 1e-5, 0.025, 0.3]:
        try:
            x = solve_x(upper, p, 1e-300, 1e300)
        except ValueError:
            continue
        for s in (-x, x):
            pdf = float(t_pdf_even(s, df)) if df >= 1000 and df % 2 == 0 else d.pdf(s)
            rows.append((df, s, d.cdf(s), pdf))
    pdf0 = float(t_pdf_even(0.0, df)) if df >= 1000 and df % 2 == 0 else d.pdf(0.0)
    rows.append((df, 0.0, d.cdf(0.0), pdf0))
    for p in [1e-300, 1e-100, 1e-12, 1e-3, 0.05, 0.3, 0.7, 0.95, 1 - 1e-12, 1 - 1e-16]:
        q = min(p, 1 - p)
        try:
            x = solve_x(upper, q, 1e-300, 1e300)
        except ValueError:
            continue
        qrows.append((df, p, -x if p < 0.5 else x))
write("statis_t.txt", [
    "Student t distribution: DegFree x cdf pdf",
    "cdf = scipy.stats.t.cdf(x, df) (SciPy 1.10, double); pdf = scipy.stats.t.pdf(x, df), but",
    "for even df >= 1000 the exact Gamma ratio a prod (2j-1)/(2j) in 40-digit decimals",
    "|x| = roots of t.logsf = ln q for q in 1e-300 .. 0.3 (brentq in ln x), both signs",
    "generated by statis_reference.py; relative precision of SciPy about 1e-14"], rows)
write("statis_t_quantile.txt", [
    "Student t quantiles: DegFree p x",
    "|x| solves scipy.stats.t.logsf(|x|, df) = ln min(p, 1-p), brentq in ln x with xtol",
    "1e-15 (SciPy 1.10); generated by statis_reference.py"], qrows)

# ---- F -----------------------------------------------------------------------------------
PAIRS = [(1, 1), (1, 10), (2, 5), (5, 2), (10, 10), (3, 1000), (100, 100), (1000, 3),
         (10000, 10000), (1000000, 1000000), (1000000, 10), (10, 1000000)]
rows, qrows = [], []
for m, n in PAIRS:
    d = stats.f(m, n)
    exact = f_exact(1.0, m, n) is not None

    class Exact:
        @staticmethod
        def logcdf(x):
            v = f_exact(x, m, n)[0]
            return float(v.ln()) if v > 0 else -math.inf

        @staticmethod
        def logsf(x):
            v = f_exact(x, m, n)[1]
            return float(v.ln()) if v > 0 else -math.inf

    for p in [1e-300, 1e-50, 1e-10, 0.01, 0.5, 0.99, 1 - 1e-10]:
        try:
            x = positive_quantile(d, p)
            if exact:
                # SciPy's root is close; refine it on the exact tails within a narrow bracket.
                logtail = Exact.logcdf if p < 0.5 else Exact.logsf
                target = p if p < 0.5 else 1 - p
                x = solve_x(logtail, target, x * (1 - 1e-6), x * (1 + 1e-6), 4)
        except ValueError:
            continue
        if x >= 1e-300:
            if exact:
                cdf, _, pdf = f_exact(x, m, n)
                rows.append((m, n, x, float(cdf), float(pdf)))
            else:
                rows.append((m, n, x, d.cdf(x), d.pdf(x)))
            qrows.append((m, n, p, x))
write("statis_f.txt", [
    "F distribution: DegFree1 DegFree2 x cdf pdf",
    "cdf, pdf: where m or n is even, closed forms of the incomplete beta function with a whole",
    "parameter (finite sums) and of B(a, b), in 400-digit decimal arithmetic (exact to double);",
    "F(1, 1) by its arctangent form; otherwise (10000, 10000), (1000000, 1000000) and odd pairs",
    "scipy.stats.f.cdf(x, m, n), f.pdf(x, m, n) (SciPy 1.10, double)",
    "x = roots of f.logcdf/logsf = ln p for p in 1e-300 .. 1-1e-10 (brentq in ln x)",
    "generated by statis_reference.py; relative precision of SciPy about 1e-13"], rows)
write("statis_f_quantile.txt", [
    "F quantiles: DegFree1 DegFree2 p x",
    "x solves ln cdf(x) = ln p (p < 0.5) or ln sf(x) = ln(1-p) with the cdf of statis_f.txt,",
    "brentq in ln x with xtol 1e-15; generated by statis_reference.py"], qrows)

# ---- binomial ----------------------------------------------------------------------------
rows = []
for n in [1, 10, 100, 1000, 10000, 100000, 1000000]:
    for p in [1e-6, 0.01, 0.3, 0.5, 0.9]:
        d = stats.binom(n, p)
        mean, sd = n * p, math.sqrt(n * p * (1 - p))
        ks = {0, n, int(mean), int(mean + sd), int(mean - 3 * sd), int(mean + 10 * sd),
              int(mean - 30 * sd), n // 3}
        for k in sorted(k for k in ks if 0 <= k <= n):
            pmf, cdf = d.pmf(k), d.cdf(k)
            if pmf > 1e-300 and cdf > 1e-300:
                rows.append((n, p, k, pmf, cdf))
write("statis_binom.txt", [
    "Binomial distribution: n p k pmf cdf",
    "pmf = scipy.stats.binom.pmf(k, n, p), cdf = scipy.stats.binom.cdf(k, n, p)",
    "(SciPy 1.10, Boost.Math kernels, double); generated by statis_reference.py"], rows)


# ---- Mann-Whitney U, exact ---------------------------------------------------------------
def u_counts(m, n):
    """Counts of arrangements with U = 0..mn: coefficients of the Gaussian binomial."""
    c = [1] + [0] * (m * n)
    for i in range(1, m + 1):
        for j in range(i, m * n + 1):          # divide by (1 - q^i)
            c[j] += c[j - i]
        for j in range(m * n, n + i - 1, -1):  # multiply by (1 - q^(n+i))
            c[j] -= c[j - n - i]
    return c


rows, qrows = [], []
for m, n in [(1, 1), (3, 4), (5, 5), (10, 7), (20, 20), (8, 200), (50, 50)]:
    c = u_counts(m, n)
    total = math.comb(m + n, m)
    assert sum(c) == total and all(v >= 0 for v in c)
    cum = 0
    cums = []
    for v in c:
        cum += v
        cums.append(cum)
    for u in sorted({0, 1, 2, m * n // 7, m * n // 3, m * n // 2, m * n - 3, m * n}):
        if 0 <= u <= m * n:
            rows.append((m, n, u, float(Fraction(c[u], total)), float(Fraction(cums[u], total))))
    for alpha in [1e-12, 0.01, 0.05, 0.5, 0.95, 0.99]:
        u = next(k for k in range(m * n + 1) if Fraction(cums[k], total) >= Fraction(alpha))
        qrows.append((m, n, alpha, u))
write("statis_mwu.txt", [
    "Mann-Whitney U distribution without ties: n1 n2 u P(U=u) P(U<=u)",
    "exact rational counts (Gaussian binomial coefficients in Python integers) over",
    "comb(n1+n2, n1), rounded once to double; generated by statis_reference.py"], rows)
write("statis_mwu_quantile.txt", [
    "Mann-Whitney U quantiles: n1 n2 alpha u, u the smallest with P(U<=u) >= alpha (exact",
    "rational comparison); generated by statis_reference.py"], qrows)

# ---- Shapiro-Wilk ------------------------------------------------------------------------
rng = np.random.default_rng(20261122)
rows = []
for n in [3, 4, 7, 11, 12, 20, 50, 200, 1000, 5000]:
    for kind in ["normal", "uniform", "exponential"]:
        x = {"normal": rng.normal, "uniform": rng.uniform, "exponential": rng.exponential}[kind](
            size=n)
        w, pv = stats.shapiro(x)
        rows.append((n, float(w), float(pv)))
write("statis_shapiro.txt", [
    "Shapiro-Wilk W and its p-value P(W' <= W): n W p",
    "(W, p) = scipy.stats.shapiro(sample) for random normal, uniform and exponential samples",
    "(SciPy 1.10, Royston's AS R94 in single precision: p good to about 1e-6 relative)"], rows)

# ---- Kolmogorov-Smirnov ------------------------------------------------------------------
rows = []
for n in [1, 2, 3, 5, 10, 20, 50, 99, 100, 500, 1000, 10000]:
    for d in [0.01, 0.05, 0.1, 0.2, 0.3, 0.5, 0.7, 0.9]:
        sf = stats.kstwo.sf(d, n)
        if sf > 1e-300:
            rows.append((n, d, sf))
write("statis_ks.txt", [
    "One-sample Kolmogorov-Smirnov statistic: n d P(D_n >= d)",
    "P = scipy.stats.kstwo.sf(d, n), the exact distribution (Simard and L'Ecuyer), SciPy 1.10,",
    "double; generated by statis_reference.py"], rows)
