#include "color.h"

#include <algorithm>
#include <cmath>

namespace verlis {

namespace {

int channel(Color color, int shift) { return int((color >> shift) & 0xFF); }

double unit(double x)
{
    if (std::isnan(x))
        return 0.0;
    return std::clamp(x, 0.0, 1.0);
}

int byte(double x) { return int(std::lround(unit(x) * 255.0)); }

} // namespace

Color HSV(double hue, double saturation, double value, int /*alpha*/)
{
    const double s = unit(saturation);
    const double v = unit(value);
    double h = std::isfinite(hue) ? hue - std::floor(hue) : 0.0; // hue turns round
    const double h6 = h * 6.0;
    const double sector = std::floor(h6);
    const double f = h6 - sector;
    const double p = v * (1.0 - s);
    const double q = v * (1.0 - s * f);
    const double t = v * (1.0 - s * (1.0 - f));
    double r = v, g = v, b = v;
    switch (int(sector) % 6) {
    case 0:
        r = v;
        g = t;
        b = p;
        break;
    case 1:
        r = q;
        g = v;
        b = p;
        break;
    case 2:
        r = p;
        g = v;
        b = t;
        break;
    case 3:
        r = p;
        g = q;
        b = v;
        break;
    case 4:
        r = t;
        g = p;
        b = v;
        break;
    default:
        r = v;
        g = p;
        b = q;
        break;
    }
    return Color(byte(r) << 16 | byte(g) << 8 | byte(b));
}

double readColorHue(Color color)
{
    const int r = channel(color, 16), g = channel(color, 8), b = channel(color, 0);
    const int max = std::max({r, g, b});
    const int min = std::min({r, g, b});
    const double delta = max - min;
    if (delta == 0)
        return 0.0;
    double h;
    if (max == r)
        h = (g - b) / delta;
    else if (max == g)
        h = 2.0 + (b - r) / delta;
    else
        h = 4.0 + (r - g) / delta;
    h /= 6.0;
    return h < 0 ? h + 1.0 : h;
}

double readColorSaturation(Color color)
{
    const int max = std::max({channel(color, 16), channel(color, 8), channel(color, 0)});
    const int min = std::min({channel(color, 16), channel(color, 8), channel(color, 0)});
    return max == 0 ? 0.0 : double(max - min) / max;
}

double readColorValue(Color color)
{
    return std::max({channel(color, 16), channel(color, 8), channel(color, 0)}) / 255.0;
}

} // namespace verlis
