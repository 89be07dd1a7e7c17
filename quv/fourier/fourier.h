// Chief header of the Fourier unit: the TFastFourier component with its ten weighting
// windows, and free functions for spectra of any length (power spectrum, Welch periodogram).
// Errors raise EQUVFourierError.
#pragma once

#include "quv/fourier/any_length.h"
#include "quv/fourier/fast_fourier.h"
#include "quv/fourier/fft_core.h"
#include "quv/fourier/windows.h"
