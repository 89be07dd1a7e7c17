// Copying, cloning and filling of dynamic arrays of one to four dimensions.
//
// Bounds are 0-based and inclusive, all low bounds first, then all high bounds; destination
// positions follow, one per dimension. Copy and fill functions never resize their
// destination: it must already be large enough. Codes: kOAOk (0), kOAEmpty (-1), kOABadBounds
// (-2), declared in stats.h.
#pragma once

#include <cstdint>

#include "quv/base/types.h"
#include "quv/openarrays/stats.h"

namespace quv {

/// Copies Source, or its sub-range, into Dest from the destination position(s) on (one per
/// dimension, 0-based); Dest is never resized. Code 0; -1 when Source or Dest is empty; -2 when
/// a bound or destination position is negative, a bound lies at or beyond its end, a high bound
/// is below its low bound, or the copy does not fit Dest (checked for every inner array it
/// touches). Nothing is written on failure. Source and Dest may be the same array.
std::int32_t CopyArray(const TDoubleArray& Source, std::int32_t DestIx1, TDoubleArray& Dest);
std::int32_t CopyArray(const TDoubleArray& Source, std::int32_t Lo1, std::int32_t Hi1,
                       std::int32_t DestIx1, TDoubleArray& Dest);
std::int32_t CopyArray(const TIntArray& Source, std::int32_t DestIx1, TIntArray& Dest);
std::int32_t CopyArray(const TIntArray& Source, std::int32_t Lo1, std::int32_t Hi1,
                       std::int32_t DestIx1, TIntArray& Dest);
std::int32_t CopyArray(const TDouble2DArray& Source, std::int32_t DestIx1, std::int32_t DestIx2,
                       TDouble2DArray& Dest);
std::int32_t CopyArray(const TDouble2DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Hi1, std::int32_t Hi2, std::int32_t DestIx1,
                       std::int32_t DestIx2, TDouble2DArray& Dest);
std::int32_t CopyArray(const TInt2DArray& Source, std::int32_t DestIx1, std::int32_t DestIx2,
                       TInt2DArray& Dest);
std::int32_t CopyArray(const TInt2DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Hi1, std::int32_t Hi2, std::int32_t DestIx1,
                       std::int32_t DestIx2, TInt2DArray& Dest);
std::int32_t CopyArray(const TDouble3DArray& Source, std::int32_t DestIx1, std::int32_t DestIx2,
                       std::int32_t DestIx3, TDouble3DArray& Dest);
std::int32_t CopyArray(const TDouble3DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                       std::int32_t DestIx1, std::int32_t DestIx2, std::int32_t DestIx3,
                       TDouble3DArray& Dest);
std::int32_t CopyArray(const TInt3DArray& Source, std::int32_t DestIx1, std::int32_t DestIx2,
                       std::int32_t DestIx3, TInt3DArray& Dest);
std::int32_t CopyArray(const TInt3DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                       std::int32_t DestIx1, std::int32_t DestIx2, std::int32_t DestIx3,
                       TInt3DArray& Dest);
std::int32_t CopyArray(const TDouble4DArray& Source, std::int32_t DestIx1, std::int32_t DestIx2,
                       std::int32_t DestIx3, std::int32_t DestIx4, TDouble4DArray& Dest);
std::int32_t CopyArray(const TDouble4DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                       std::int32_t Hi3, std::int32_t Hi4, std::int32_t DestIx1,
                       std::int32_t DestIx2, std::int32_t DestIx3, std::int32_t DestIx4,
                       TDouble4DArray& Dest);
std::int32_t CopyArray(const TInt4DArray& Source, std::int32_t DestIx1, std::int32_t DestIx2,
                       std::int32_t DestIx3, std::int32_t DestIx4, TInt4DArray& Dest);
std::int32_t CopyArray(const TInt4DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                       std::int32_t Hi3, std::int32_t Hi4, std::int32_t DestIx1,
                       std::int32_t DestIx2, std::int32_t DestIx3, std::int32_t DestIx4,
                       TInt4DArray& Dest);
std::int32_t CopyArray(const TBoolArray& Source, std::int32_t DestIx1, TBoolArray& Dest);
std::int32_t CopyArray(const TBool2DArray& Source, std::int32_t DestIx1, std::int32_t DestIx2,
                       TBool2DArray& Dest);

/// A new array equal to Source (ragged shapes kept).
TDoubleArray CloneArray(const TDoubleArray& Source);
TIntArray CloneArray(const TIntArray& Source);
TDouble2DArray CloneArray(const TDouble2DArray& Source);
TInt2DArray CloneArray(const TInt2DArray& Source);
TDouble3DArray CloneArray(const TDouble3DArray& Source);
TInt3DArray CloneArray(const TInt3DArray& Source);
TDouble4DArray CloneArray(const TDouble4DArray& Source);
TInt4DArray CloneArray(const TInt4DArray& Source);
TBoolArray CloneArray(const TBoolArray& Source);
TBool2DArray CloneArray(const TBool2DArray& Source);
TSingleArray CloneArray(const TSingleArray& Source);
TStrArray CloneArray(const TStrArray& Source);

/// Dest := a new array holding the sub-range of Source (Dest is resized). Code 0 / -1 / -2
/// as the statistics family; Dest is left untouched on failure.
std::int32_t CloneArray(const TDoubleArray& Source, std::int32_t Lo1, std::int32_t Hi1,
                        TDoubleArray& Dest);
std::int32_t CloneArray(const TIntArray& Source, std::int32_t Lo1, std::int32_t Hi1,
                        TIntArray& Dest);
std::int32_t CloneArray(const TDouble2DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                        std::int32_t Hi1, std::int32_t Hi2, TDouble2DArray& Dest);
std::int32_t CloneArray(const TInt2DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                        std::int32_t Hi1, std::int32_t Hi2, TInt2DArray& Dest);
std::int32_t CloneArray(const TDouble3DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                        std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                        TDouble3DArray& Dest);
std::int32_t CloneArray(const TInt3DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                        std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                        TInt3DArray& Dest);
std::int32_t CloneArray(const TDouble4DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                        std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                        std::int32_t Hi3, std::int32_t Hi4, TDouble4DArray& Dest);
std::int32_t CloneArray(const TInt4DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                        std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                        std::int32_t Hi3, std::int32_t Hi4, TInt4DArray& Dest);

/// A new array with the elements in reverse storage order (2D: the rows in reverse order,
/// each row reversed, i.e. turned by 180 degrees).
TDoubleArray CloneAndReverseArray(const TDoubleArray& Source);
TIntArray CloneAndReverseArray(const TIntArray& Source);
TSingleArray CloneAndReverseArray(const TSingleArray& Source);
TBoolArray CloneAndReverseArray(const TBoolArray& Source);
TStrArray CloneAndReverseArray(const TStrArray& Source);
TDouble2DArray CloneAndReverseArray(const TDouble2DArray& Source);
TInt2DArray CloneAndReverseArray(const TInt2DArray& Source);

/// Sets the elements of the sub-range (forms with bounds) or of the whole array to Value.
/// Code 0, -1 (empty) or -2 (bad bounds, see stats.h); nothing is written on failure.
std::int32_t FillArray(TDoubleArray& Data, double Value);
std::int32_t FillArray(TDoubleArray& Data, double Value, std::int32_t Lo1, std::int32_t Hi1);
std::int32_t FillArray(TIntArray& Data, std::int32_t Value);
std::int32_t FillArray(TIntArray& Data, std::int32_t Value, std::int32_t Lo1, std::int32_t Hi1);
std::int32_t FillArray(TDouble2DArray& Data, double Value);
std::int32_t FillArray(TDouble2DArray& Data, double Value, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Hi1, std::int32_t Hi2);
std::int32_t FillArray(TInt2DArray& Data, std::int32_t Value);
std::int32_t FillArray(TInt2DArray& Data, std::int32_t Value, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Hi1, std::int32_t Hi2);
std::int32_t FillArray(TDouble3DArray& Data, double Value);
std::int32_t FillArray(TDouble3DArray& Data, double Value, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3);
std::int32_t FillArray(TInt3DArray& Data, std::int32_t Value);
std::int32_t FillArray(TInt3DArray& Data, std::int32_t Value, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3);
std::int32_t FillArray(TDouble4DArray& Data, double Value);
std::int32_t FillArray(TDouble4DArray& Data, double Value, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                       std::int32_t Hi3, std::int32_t Hi4);
std::int32_t FillArray(TInt4DArray& Data, std::int32_t Value);
std::int32_t FillArray(TInt4DArray& Data, std::int32_t Value, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                       std::int32_t Hi3, std::int32_t Hi4);
std::int32_t FillArray(TBoolArray& Data, bool Value);
std::int32_t FillArray(TBool2DArray& Data, bool Value);

/// Fills with the series Start, Start + Step, Start + 2 Step, ... in storage order (outer
/// dimension outermost) over the whole array or the sub-range; element k is computed as
/// Start + k * Step (integers wrap modulo 2^32). Code 0 / -1 / -2.
std::int32_t FillArraySerial(TDoubleArray& Data, double Start, double Step);
std::int32_t FillArraySerial(TIntArray& Data, std::int32_t Start, std::int32_t Step);
std::int32_t FillArraySerial(TDouble2DArray& Data, double Start, double Step);
std::int32_t FillArraySerial(TInt2DArray& Data, std::int32_t Start, std::int32_t Step);
std::int32_t FillArraySerial(TDouble3DArray& Data, double Start, double Step);
std::int32_t FillArraySerial(TInt3DArray& Data, std::int32_t Start, std::int32_t Step);
std::int32_t FillArraySerial(TDouble4DArray& Data, double Start, double Step);
std::int32_t FillArraySerial(TInt4DArray& Data, std::int32_t Start, std::int32_t Step);
std::int32_t FillArraySerial(TDoubleArray& Data, double Start, double Step, std::int32_t Lo1,
                             std::int32_t Hi1);
std::int32_t FillArraySerial(TIntArray& Data, std::int32_t Start, std::int32_t Step,
                             std::int32_t Lo1, std::int32_t Hi1);
std::int32_t FillArraySerial(TDouble2DArray& Data, double Start, double Step, std::int32_t Lo1,
                             std::int32_t Lo2, std::int32_t Hi1, std::int32_t Hi2);
std::int32_t FillArraySerial(TInt2DArray& Data, std::int32_t Start, std::int32_t Step,
                             std::int32_t Lo1, std::int32_t Lo2, std::int32_t Hi1,
                             std::int32_t Hi2);
std::int32_t FillArraySerial(TSingleArray& Data, float Start, float Step);

/// Sets the cells whose mask cell is true (non-zero) to Value. Code 0, -1 (empty data) or -2
/// (the mask lacks a cell of the data); nothing is written on failure.
std::int32_t FillArrayMasked(TDouble2DArray& Data, const TBool2DArray& Mask, double Value);
std::int32_t FillArrayMasked(TInt2DArray& Data, const TBool2DArray& Mask, std::int32_t Value);

/// Sets the diagonal cells [i][i] ([i][i][i], ...) to Value for i = 0, 1, ... as long as every
/// inner array holds index i. Code 0 or -1 (empty).
std::int32_t FillDiagArray(TDouble2DArray& Data, double Value);
std::int32_t FillDiagArray(TInt2DArray& Data, std::int32_t Value);
std::int32_t FillDiagArray(TDouble3DArray& Data, double Value);
std::int32_t FillDiagArray(TInt3DArray& Data, std::int32_t Value);
std::int32_t FillDiagArray(TDouble4DArray& Data, double Value);
std::int32_t FillDiagArray(TInt4DArray& Data, std::int32_t Value);

/// Fills with uniform random numbers from the process-wide source (quv::Random): reals in
/// [Low, High), integers in [Low, High] (bounds in either order). Code 0 or -1 (empty); the
/// ranged form also -2.
std::int32_t FillRandomUniform(TDoubleArray& Data, double Low, double High);
std::int32_t FillRandomUniform(TIntArray& Data, std::int32_t Low, std::int32_t High);
std::int32_t FillRandomUniform(TDouble2DArray& Data, double Low, double High);
std::int32_t FillRandomUniform(TInt2DArray& Data, std::int32_t Low, std::int32_t High);
std::int32_t FillRandomUniform(TDouble3DArray& Data, double Low, double High);
std::int32_t FillRandomUniform(TInt3DArray& Data, std::int32_t Low, std::int32_t High);
std::int32_t FillRandomUniform(TDouble4DArray& Data, double Low, double High);
std::int32_t FillRandomUniform(TInt4DArray& Data, std::int32_t Low, std::int32_t High);
std::int32_t FillRandomUniform(TDoubleArray& Data, double Low, double High, std::int32_t Lo1,
                               std::int32_t Hi1);

/// Fills with normal random numbers Mean + StdDev * GRandom(). Code 0 or -1 (empty).
std::int32_t FillRandomNormal(TDoubleArray& Data, double Mean, double StdDev);
std::int32_t FillRandomNormal(TDouble2DArray& Data, double Mean, double StdDev);
std::int32_t FillRandomNormal(TDouble3DArray& Data, double Mean, double StdDev);
std::int32_t FillRandomNormal(TDouble4DArray& Data, double Mean, double StdDev);

}  // namespace quv
