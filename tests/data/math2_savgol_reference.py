# Generates math2_savgol.txt: Savitzky-Golay coefficients (coefficient k multiplies window
# element k) from two independent sources:
#   scipy  scipy.signal.savgol_coeffs(window, polyorder, deriv, pos=pos, use="dot"), scipy 1.10.1
#   exact  the normal equations of the least-squares fit solved in exact rational arithmetic
#          (Python fractions), rounded to 17 significant digits at the end
# Every case has an exact line. A scipy line is written only where scipy agrees with the exact
# values to 1e-12 (relative to the largest coefficient): its least-squares solver loses digits
# for long off-centre windows of high order (the cases it misses are listed in the header).
# Run with: python3 math2_savgol_reference.py > math2_savgol.txt
from fractions import Fraction
from scipy.signal import savgol_coeffs


def exact_coeffs(w, p, d, pos):
    a = [[Fraction(i - pos) ** k for k in range(p + 1)] for i in range(w)]
    n = p + 1
    m = [[sum(a[i][r] * a[i][c] for i in range(w)) for c in range(n)] +
         [Fraction(int(r == c)) for c in range(n)] for r in range(n)]
    for col in range(n):
        piv = next(r for r in range(col, n) if m[r][col] != 0)
        m[col], m[piv] = m[piv], m[col]
        pv = m[col][col]
        m[col] = [v / pv for v in m[col]]
        for r in range(n):
            if r != col and m[r][col] != 0:
                f = m[r][col]
                m[r] = [x - f * y for x, y in zip(m[r], m[col])]
    fact = 1
    for k in range(1, d + 1):
        fact *= k
    return [fact * sum(m[d][n + k] * a[i][k] for k in range(n)) for i in range(w)]


cases = []
for w in range(5, 26, 2):
    for deriv in (0, 1, 2):
        cases.append((w, 2, deriv, w // 2))
cases += [(3, 2, 0, 1), (3, 2, 2, 1), (7, 4, 0, 3), (7, 4, 2, 3), (9, 3, 1, 4), (11, 6, 3, 5),
          (15, 5, 0, 0), (15, 5, 1, 2), (21, 3, 0, 20), (31, 8, 4, 29), (101, 2, 0, 50),
          (51, 10, 0, 25), (5, 0, 0, 2), (1, 0, 0, 0), (9, 8, 0, 0), (25, 12, 2, 3)]
lines, missed = [], []
for w, p, d, pos in cases:
    ex = [float(v) for v in exact_coeffs(w, p, d, pos)]
    lines.append("exact %d %d %d %d %s" % (w, p, d, pos, " ".join("%.17g" % v for v in ex)))
    sc = savgol_coeffs(w, p, deriv=d, pos=pos, use="dot")
    scale = max(1.0, max(abs(v) for v in ex))
    if max(abs(a - b) for a, b in zip(sc, ex)) <= 1e-12 * scale:
        lines.append("scipy %d %d %d %d %s" % (w, p, d, pos, " ".join("%.17g" % v for v in sc)))
    else:
        missed.append("(%d %d %d %d)" % (w, p, d, pos))
print("# Savitzky-Golay coefficients written by math2_savgol_reference.py (see there).")
print("# Fields: source window polyorder deriv pos c_0 .. c_(window-1)")
print("# No scipy line for: " + " ".join(missed))
for line in lines:
    print(line)
