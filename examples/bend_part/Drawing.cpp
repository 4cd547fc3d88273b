#include "Drawing.h"

#include <algorithm>
#include <cmath>

namespace {

LCString Number(double v) { return LCString(LCMath::RoundToDec(v, 3), 3, true); }

/// "#rrggbb" for plain colours; anything else is drawn black.
LCString Css(LCColor const & colour)
{
    if (colour.GetT() != 0) return "#000000";
    LCString text("#");
    for (int const channel : {colour.GetR(), colour.GetG(), colour.GetB()})
        text += LCString(channel, 2, '0', true);
    return text;
}

LCString Escaped(LCString const & text) { return text.Replace("&", "&amp;").Replace("<", "&lt;"); }

/// Builds the drawing in millimetres, y downwards.
class Svg {
public:
    explicit Svg(double textHeight) : mdvText(textHeight) {}

    void Rectangle(double x, double y, double width, double height, LCString const & style)
    {
        movBody += LCString("<rect x=\"") + Number(x) + "\" y=\"" + Number(y) + "\" width=\"" +
                   Number(width) + "\" height=\"" + Number(height) + "\" " + style + "/>\n";
    }
    void Line(double x1, double y1, double x2, double y2, LCString const & style)
    {
        movBody += LCString("<line x1=\"") + Number(x1) + "\" y1=\"" + Number(y1) + "\" x2=\"" + Number(x2) +
                   "\" y2=\"" + Number(y2) + "\" " + style + "/>\n";
    }
    void Path(LCString const & data, LCString const & style)
    {
        movBody += LCString("<path d=\"") + data + "\" " + style + "/>\n";
    }
    void Text(double x, double y, LCString const & text, LCString const & anchor = "middle",
              double turned = 0.0, double size = 1.0)
    {
        movBody += LCString("<text x=\"") + Number(x) + "\" y=\"" + Number(y) + "\" font-size=\"" +
                   Number(size * mdvText) + "\" text-anchor=\"" + anchor + "\"";
        if (turned != 0.0) {
            movBody +=
                LCString(" transform=\"rotate(") + Number(turned) + " " + Number(x) + " " + Number(y) + ")\"";
        }
        movBody += LCString(">") + Escaped(text) + "</text>\n";
    }
    /// A dimension between two x with its text, on the line y; extension lines come from `from`.
    void HorizontalDimension(double x1, double x2, double y, double from)
    {
        Line(x1, from, x1, y + Side(y, from) * mdvText / 2.0, thin);
        Line(x2, from, x2, y + Side(y, from) * mdvText / 2.0, thin);
        Line(x1, y, x2, y, arrows);
        Text((x1 + x2) / 2.0, y - mdvText / 3.0, Number(LCMath::RoundToDec(x2 - x1, 2)));
    }
    void VerticalDimension(double y1, double y2, double x, double from)
    {
        Line(from, y1, x - mdvText / 2.0, y1, thin);
        Line(from, y2, x - mdvText / 2.0, y2, thin);
        Line(x, y1, x, y2, arrows);
        Text(x - mdvText / 3.0, (y1 + y2) / 2.0, Number(LCMath::RoundToDec(y2 - y1, 2)), "middle", -90.0);
    }
    LCString Document(double x, double y, double width, double height) const
    {
        double const pixels = 1200.0;
        return LCString("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"") + Number(pixels) +
               "\" height=\"" + Number(pixels * height / width) + "\" viewBox=\"" + Number(x) + " " +
               Number(y) + " " + Number(width) + " " + Number(height) +
               "\" font-family=\"sans-serif\" stroke-width=\"" + Number(mdvText / 12.0) + "\">\n" +
               "<defs><marker id=\"arrow\" viewBox=\"0 0 10 6\" refX=\"10\" refY=\"3\" "
               "markerUnits=\"userSpaceOnUse\" "
               "markerWidth=\"" +
               Number(mdvText) + "\" markerHeight=\"" + Number(0.5 * mdvText) +
               "\" orient=\"auto-start-reverse\"><path d=\"M0 0L10 3L0 6z\"/></marker></defs>\n" +
               "<rect x=\"" + Number(x) + "\" y=\"" + Number(y) + "\" width=\"" + Number(width) +
               "\" height=\"" + Number(height) + "\" fill=\"#ffffff\"/>\n" + movBody + "</svg>\n";
    }

private:
    static double Side(double y, double from) { return y < from ? -1.0 : 1.0; }

    static constexpr char const * thin = "stroke=\"#404040\" stroke-width=\"0.05%\"";
    static constexpr char const * arrows =
        "stroke=\"#000000\" stroke-width=\"0.07%\" marker-start=\"url(#arrow)\" marker-end=\"url(#arrow)\"";

    LCString movBody;
    double mdvText;
};

LCString BendColour(Bend const & bend)
{
    if (bend.up) return Css(LCColorQRTBendSymmetryUpColor());
    return Css(LCColorQRTBendSymmetryDownColor());
}

/// The middle line of the bent sheet as a path, drawn as wide as the sheet is thick; `box` becomes its
/// corners.
struct Section {
    LCString path;
    double left = 0.0, top = 0.0, right = 0.0, bottom = 0.0;

    explicit Section(Part const & part)
    {
        double x = 0.0, y = 0.0, heading = 0.0, setBackBefore = 0.0;
        path = "M0 0";
        auto const reach = [&] {
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = std::max(bottom, y);
        };
        auto const straight = [&](double length) {
            x += length * LCMath::cosDeg(heading);
            y -= length * LCMath::sinDeg(heading);
            path += LCString("L") + Number(x) + " " + Number(y);
            reach();
        };
        for (std::size_t i = 0; i < part.bends.size(); ++i) {
            Bend const & bend = part.bends[i];
            double const setBack = bend.SetBack(part.thickness);
            straight(part.flanges[i] - setBackBefore - setBack);
            setBackBefore = setBack;

            double const radius = bend.innerRadius + part.thickness / 2.0;
            double const chord = 2.0 * radius * LCMath::sinDeg(bend.angle / 2.0);
            double const turn = bend.up ? bend.angle : -bend.angle;
            x += chord * LCMath::cosDeg(heading + turn / 2.0);
            y -= chord * LCMath::sinDeg(heading + turn / 2.0);
            heading += turn;
            path += LCString("A") + Number(radius) + " " + Number(radius) + " 0 0 " +
                    (bend.up ? "0 " : "1 ") + Number(x) + " " + Number(y);
            reach();
        }
        straight(part.flanges.back() - setBackBefore);
    }
};

}  // namespace

LCString DrawSvg(Part const & part, FlatPattern const & pattern)
{
    double const length = pattern.length;
    double const width = part.width;
    double const text = std::max(length, width) / 45.0;
    Svg svg(text);

    // The blank with its bend zones and lines.
    svg.Rectangle(0.0, 0.0, length, width,
                  LCString("fill=\"") + Css(part.colour) + "\" fill-opacity=\"0.45\" stroke=\"" +
                      Css(part.cutColour) + "\" stroke-width=\"0.15%\"");
    for (std::size_t i = 0; i < part.bends.size(); ++i) {
        Bend const & bend = part.bends[i];
        FlatPattern::BendZone const & zone = pattern.zones[i];
        svg.Rectangle(zone.start, 0.0, zone.end - zone.start, width,
                      LCString("fill=\"") + Css(LCColorQRTBendZoneMaterialColor()) +
                          "\" fill-opacity=\"0.6\"");
        svg.Line(zone.line, -0.4 * text, zone.line, width + 0.4 * text,
                 LCString("stroke=\"") + BendColour(bend) + "\" stroke-width=\"0.15%\" stroke-dasharray=\"" +
                     Number(text) + " " + Number(text / 3.0) + " " + Number(text / 5.0) + " " +
                     Number(text / 3.0) + "\"");
        svg.Text(zone.start - text / 3.0, width / 2.0,
                 LCString(bend.up ? "UP " : "DOWN ") + Number(bend.angle) + "\xC2\xB0  R" +
                     Number(bend.innerRadius),
                 "middle", -90.0);
        svg.Text(zone.line, width + 1.5 * text, LCString(i + 1));
    }

    // Dimensions: bend lines and edges in a chain above, the whole length above that, the width at the left.
    double from = 0.0;
    for (auto const & zone : pattern.zones) {
        svg.HorizontalDimension(from, zone.line, -2.0 * text, -0.5 * text);
        from = zone.line;
    }
    svg.HorizontalDimension(from, length, -2.0 * text, -0.5 * text);
    svg.HorizontalDimension(0.0, length, -4.5 * text, -0.5 * text);
    svg.VerticalDimension(0.0, width, -2.0 * text, -0.5 * text);

    // The bent section below, and the title beside it.
    Section const section(part);
    double const sectionTop = width + 4.5 * text;
    double const scale = std::min(1.0, 0.45 * length / std::max(section.right - section.left, 1.0));
    svg.Path(section.path, LCString("fill=\"none\" stroke=\"") + Css(LCColorQRTBlue()) +
                               "\" stroke-width=\"" + Number(part.thickness) + "\" transform=\"translate(" +
                               Number(scale * -section.left + text) + " " +
                               Number(sectionTop - scale * section.top) + ") scale(" + Number(scale) + ")\"");

    LCString const lines[] = {
        part.number + "  rev. " + LCString(part.revision) + "   " + part.name,
        part.material + ", " + Number(part.thickness) + " mm",
        LCString("blank ") + Number(LCMath::RoundToDec(length, 2)) + " x " + Number(width) + " mm",
        LCString("bend lines: orange up, dark red down; zones shaded"),
    };
    double const titleLeft = 0.55 * length;
    double y = sectionTop + text;
    double size = 1.3;
    for (LCString const & line : lines) {
        svg.Text(titleLeft, y, line, "start", 0.0, size);
        y += 1.8 * text;
        size = 1.0;
    }

    double const bottom =
        std::max(y, sectionTop + scale * (section.bottom - section.top) + part.thickness) + text;
    double const margin = 5.0 * text;
    double const right = std::max(length, titleLeft + 30.0 * text) + text;
    return svg.Document(-margin, -7.0 * text, right + margin, bottom + 7.0 * text);
}
