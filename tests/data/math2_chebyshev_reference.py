# Generates math2_chebyshev.txt: recursive Chebyshev filter coefficients from scipy 1.10.1
# (scipy.signal.cheby1 / butter, bilinear transform with pre-warping), an independent design
# path to the same filters. The library's filters pass -3 dB at the cutoff fc and take the
# ripple in percent (pass band between 1 - ripple/100 and 1); scipy's cheby1 takes the edge of
# the ripple band and the ripple in dB, so:
#   eps = sqrt(1 / (1 - ripple/100)^2 - 1), rp = -20 log10(1 - ripple/100),
#   kx = cosh(acosh(1/eps) / poles), ripple edge = atan(tan(pi fc) / kx) / pi (low-pass) or
#   atan(tan(pi fc) * kx) / pi (high-pass); ripple 0 is a Butterworth filter at fc.
# scipy's gain is scaled to 1 at DC (low-pass) or at 0.5 (high-pass), and its denominator
# a_k (k >= 1) is written with the opposite sign, as the library's b_k.
# Fields: poles highpass(0/1) cutoff ripple_percent, then a_0..a_poles, then b_0..b_poles.
# Run with: python3 math2_chebyshev_reference.py > math2_chebyshev.txt
import math
import numpy as np
from scipy import signal

cases = [(4, 0, 0.1, 0.5), (2, 0, 0.1, 0.5), (6, 1, 0.25, 2.0), (4, 1, 0.1, 0.5),
         (8, 0, 0.05, 1.0), (2, 1, 0.3, 10.0), (4, 0, 0.2, 0.0), (6, 1, 0.15, 0.0),
         (10, 0, 0.25, 5.0), (2, 0, 0.45, 29.0)]
print("# see math2_chebyshev_reference.py")
for poles, hp, fc, ripple in cases:
    btype = "highpass" if hp else "lowpass"
    if ripple == 0:
        b, a = signal.butter(poles, 2 * fc, btype=btype)
    else:
        eps = math.sqrt(1 / (1 - ripple / 100) ** 2 - 1)
        rp = -20 * math.log10(1 - ripple / 100)
        kx = math.cosh(math.acosh(1 / eps) / poles)
        t = math.tan(math.pi * fc)
        edge = math.atan(t * kx if hp else t / kx) / math.pi
        b, a = signal.cheby1(poles, rp, 2 * edge, btype=btype)
    sign = np.array([(-1) ** k if hp else 1 for k in range(poles + 1)])
    gain = np.sum(b * sign) / np.sum(a * sign)
    b = b / gain / a[0]
    a = a / a[0]
    bb = [0.0] + [-v for v in a[1:]]
    print(poles, hp, fc, ripple, " ".join("%.17g" % v for v in b), " ".join("%.17g" % v for v in bb))
