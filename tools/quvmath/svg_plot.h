// A small SVG line-plot writer for the commands: several series over a common x axis, with
// axes, tick labels and a legend. No dependencies beyond the standard library.
#pragma once

#include <string>
#include <vector>

namespace quvmath {

/// One line of a plot: y values at the x values of the plot, drawn in colour (any SVG colour).
struct PlotSeries {
  std::string label;
  std::string colour;
  std::vector<double> y;
};

/// Writes an SVG file of the series against x. Non-finite points break the line. Raises
/// std::runtime_error naming the file when it cannot be written.
void WriteSvgPlot(const std::string& path, const std::string& title, const std::vector<double>& x,
                  const std::vector<PlotSeries>& series);

}  // namespace quvmath
