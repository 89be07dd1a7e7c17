#include "svg_plot.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <sstream>
#include <stdexcept>

#include "commands.h"
#include "quv/base/xml.h"

namespace quvmath {

namespace {

constexpr double kWidth = 800, kHeight = 450;
constexpr double kLeft = 70, kRight = 20, kTop = 40, kBottom = 50;

// Smallest and largest finite value, widened a little when they coincide.
void Bounds(const std::vector<double>& v, double& lo, double& hi) {
  for (const double y : v) {
    if (!std::isfinite(y)) continue;
    lo = std::min(lo, y);
    hi = std::max(hi, y);
  }
}

}  // namespace

void WriteSvgPlot(const std::string& path, const std::string& title, const std::vector<double>& x,
                  const std::vector<PlotSeries>& series) {
  double x0 = std::numeric_limits<double>::infinity(), x1 = -x0;
  double y0 = x0, y1 = -x0;
  Bounds(x, x0, x1);
  for (const PlotSeries& s : series)
    Bounds(s.y, y0, y1);
  if (!(x0 <= x1)) x0 = 0, x1 = 1;
  if (!(y0 <= y1)) y0 = 0, y1 = 1;
  if (x0 == x1) x0 -= 0.5, x1 += 0.5;
  if (y0 == y1) y0 -= 0.5, y1 += 0.5;
  const double pw = kWidth - kLeft - kRight, ph = kHeight - kTop - kBottom;
  auto px = [&](double v) { return kLeft + (v - x0) / (x1 - x0) * pw; };
  auto py = [&](double v) { return kTop + (y1 - v) / (y1 - y0) * ph; };

  std::ostringstream svg;
  svg << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << kWidth << "\" height=\"" << kHeight
      << "\" font-family=\"sans-serif\" font-size=\"12\">\n"
      << "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n"
      << "<text x=\"" << kWidth / 2 << "\" y=\"24\" text-anchor=\"middle\" font-size=\"15\">"
      << quv::XmlEscape(title) << "</text>\n"
      << "<rect x=\"" << kLeft << "\" y=\"" << kTop << "\" width=\"" << pw << "\" height=\"" << ph
      << "\" fill=\"none\" stroke=\"black\"/>\n";
  for (int t = 0; t <= 4; ++t) {
    const double xv = x0 + (x1 - x0) * t / 4, yv = y0 + (y1 - y0) * t / 4;
    svg << "<text x=\"" << px(xv) << "\" y=\"" << kHeight - kBottom + 18
        << "\" text-anchor=\"middle\">" << FormatNumber(xv, 4) << "</text>\n"
        << "<text x=\"" << kLeft - 6 << "\" y=\"" << py(yv) + 4 << "\" text-anchor=\"end\">"
        << FormatNumber(yv, 4) << "</text>\n";
  }
  for (std::size_t k = 0; k < series.size(); ++k) {
    const PlotSeries& s = series[k];
    svg << "<path fill=\"none\" stroke=\"" << quv::XmlEscape(s.colour)
        << "\" stroke-width=\"1.2\" d=\"";
    bool pen = false;
    for (std::size_t i = 0; i < x.size() && i < s.y.size(); ++i) {
      if (!std::isfinite(x[i]) || !std::isfinite(s.y[i])) {
        pen = false;
        continue;
      }
      svg << (pen ? " L" : " M") << px(x[i]) << ' ' << py(s.y[i]);
      pen = true;
    }
    svg << "\"/>\n";
    const double ly = kTop + 16 + 16 * static_cast<double>(k);
    svg << "<line x1=\"" << kLeft + 10 << "\" y1=\"" << ly - 4 << "\" x2=\"" << kLeft + 34
        << "\" y2=\"" << ly - 4 << "\" stroke=\"" << quv::XmlEscape(s.colour)
        << "\" stroke-width=\"2\"/>"
        << "<text x=\"" << kLeft + 40 << "\" y=\"" << ly << "\">" << quv::XmlEscape(s.label)
        << "</text>\n";
  }
  svg << "</svg>\n";
  std::ofstream out(path, std::ios::binary);
  out << svg.str();
  if (!out) throw std::runtime_error(path + ": cannot write the plot");
}

}  // namespace quvmath
