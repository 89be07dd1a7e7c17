#!/usr/bin/env python3
# Writes curvefit_reference.txt: independent reference values for the curve-fit tests,
# computed with numpy 1.24 and scipy 1.10 (Debian python3-scipy). Run from tests/data:
#   /usr/bin/python3 curvefit_reference.py > curvefit_reference.txt
# Layout: "data NAME N" followed by N lines "x y", or "NAME v1 v2 ..." for values.
import numpy as np
from scipy import interpolate, special, stats

rng = np.random.default_rng(20261124)
out = []


def data(name, x, y):
    out.append(f"data {name} {len(x)}")
    out.extend(f"{a!r} {b!r}" for a, b in zip(x, y))


def values(name, *v):
    out.append(name + " " + " ".join(repr(float(a)) for a in v))


def line(fx, fy):
    # least squares fy = c0 + c1 fx (+ ...) by numpy's SVD-based solver
    a = np.column_stack([np.ones_like(fx[0])] + list(fx))
    c, *_ = np.linalg.lstsq(a, fy, rcond=None)
    return c


# Noisy data of the linearised models and the least-squares solution of their linear forms.
x = np.linspace(0.5, 6.0, 25)
noise = 1.0 + 0.03 * rng.standard_normal(x.size)
models = {
    "ReciLin": (1.0 / (0.5 + 0.3 * x) * noise, lambda x, y: line([x], 1 / y)),
    "Hyperbolic": (2.0 + 3.0 / x * noise, lambda x, y: line([1 / x], y)),
    "ReciHyperbolic": (x / (0.7 * x + 0.4) * noise, lambda x, y: line([1 / x], 1 / y)),
    "Log": (1.5 + 2.0 * np.log(x) + 0.05 * rng.standard_normal(x.size), lambda x, y: line([np.log(x)], y)),
    "ReciLog": (1.0 / (1.0 + 0.5 * np.log(x)) * noise, lambda x, y: line([np.log(x)], 1 / y)),
    "Power": (2.5 * x ** 1.7 * noise, lambda x, y: line([np.log(x)], np.log(y))),
    "Expo": (1.2 * np.exp(0.4 * x) * noise, lambda x, y: line([x], np.log(y))),
    "Hoerl": (1.3 * 1.2 ** x * x ** 0.8 * noise, lambda x, y: line([x, np.log(x)], np.log(y))),
    "Gauss": (4.0 * np.exp(-(x - 3.0) ** 2 / 2.5) * noise, lambda x, y: line([x, x * x], np.log(y))),
}
for name, (y, solve) in models.items():
    data("noisy_" + name, x, y)
    c = solve(x, y)
    if name in ("Power", "Expo"):
        c = [np.exp(c[0]), c[1]]
    elif name == "Hoerl":
        c = [np.exp(c[0]), np.exp(c[1]), c[2]]
    elif name == "Gauss":
        c = [np.exp(c[0] - c[1] ** 2 / (4 * c[2])), -c[1] / (2 * c[2]), -1 / c[2]]
    values("params_" + name, *c)

# Noisy cubic: polynomial coefficients, standard errors, R², ANOVA and a prediction.
xp = np.linspace(-2.0, 5.0, 30)
yp = 1.0 - 2.0 * xp + 0.5 * xp ** 2 + 0.1 * xp ** 3 + 0.2 * rng.standard_normal(xp.size)
data("noisy_cubic", xp, yp)
a = np.vander(xp, 4, increasing=True)
c, *_ = np.linalg.lstsq(a, yp, rcond=None)
res = yp - a @ c
dof = xp.size - 4
s2 = res @ res / dof
cov = s2 * np.linalg.inv(a.T @ a)
values("cubic_coef", *c)
values("cubic_se", *np.sqrt(np.diag(cov)))
sst = np.sum((yp - yp.mean()) ** 2)
sse = res @ res
values("cubic_r2", 1 - sse / sst)
f = (sst - sse) / 3 / s2
values("cubic_anova", sst - sse, sse, sst, f, stats.f.sf(f, 3, dof))
x0 = 1.7
g = np.array([1, x0, x0 ** 2, x0 ** 3])
t = stats.t.ppf(0.975, dof)
values("cubic_predict", x0, g @ c, t * np.sqrt(g @ cov @ g), t * np.sqrt(s2 + g @ cov @ g))

# Rank statistics with ties in x, in y and in both.
xr = rng.integers(0, 8, 40).astype(float)
yr = np.round(0.5 * xr + rng.integers(0, 6, 40)).astype(float)
data("ranks", xr, yr)
tau, p = stats.kendalltau(xr, yr, variant="b", method="asymptotic")
z = np.sign(tau) * np.sqrt(2) * special.erfcinv(p)
conc = disc = tx = ty = txy = 0
for i in range(xr.size):
    for j in range(i + 1, xr.size):
        dx, dy = xr[i] - xr[j], yr[i] - yr[j]
        if dx == 0 and dy == 0:
            txy += 1
        elif dx == 0:
            tx += 1
        elif dy == 0:
            ty += 1
        elif dx * dy > 0:
            conc += 1
        else:
            disc += 1
values("ranks_counts", conc, disc, tx, ty, txy)
values("ranks_kendall", tau, z)
values("ranks_spearman", stats.spearmanr(xr, yr).correlation)
values("ranks_gamma", (conc - disc) / (conc + disc))

# Moments, order statistics and circular means of a skewed sample.
xs = rng.gamma(2.0, 1.5, 50)
ys = (350.0 + 30.0 * rng.standard_normal(50)) % 360.0
data("moments", xs, ys)
values("moments_skew", stats.skew(xs, bias=False), stats.skew(ys, bias=False))
values("moments_kurt", stats.kurtosis(xs, bias=False), stats.kurtosis(ys, bias=False))
values("moments_percentiles", *np.percentile(xs, [0, 10, 25, 50, 75, 90, 100]))
values("moments_circmean", stats.circmean(xs, high=360), stats.circmean(ys, high=360))

# Splines through unsorted points with a repeated x (merged into its mean y).
xk = np.array([3.0, 0.0, 1.0, 2.5, 4.0, 6.0, 5.0, 2.5])
yk = np.array([2.0, 1.0, 0.5, 1.0, 3.5, 2.0, 4.0, 2.0])
data("spline", xk, yk)
ux = np.unique(xk)
uy = np.array([yk[xk == v].mean() for v in ux])
w = np.array([np.sum(xk == v) for v in ux], dtype=float)
at = np.array([-0.5, 0.0, 0.3, 1.7, 2.5, 3.3, 4.9, 6.0, 6.4])
values("spline_at", *at)
values("spline_natural", *interpolate.CubicSpline(ux, uy, bc_type="natural")(at))
values("spline_clamped", *interpolate.CubicSpline(ux, uy, bc_type=((1, 0.5), (1, -1.0)))(at))
for fac in (0.3, 0.9):
    h = (ux[-1] - ux[0]) / (ux.size - 1)
    lam = fac / (1 - fac) * h ** 3
    sp = interpolate.make_smoothing_spline(ux, uy, w=w, lam=lam)
    values(f"spline_smooth_{fac}", *sp(at[1:-1]))

print("\n".join(out))
