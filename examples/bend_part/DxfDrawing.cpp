#include "Drawing.h"

namespace {

/// Group codes and values, a line each.
class Dxf {
public:
    void Add(int code, LCString const & value)
    {
        movText += LCString(code, 3, ' ', false) + "\n" + value + "\n";
    }
    void Add(int code, double value) { Add(code, LCString(value, 6, true)); }
    void Add(int code, int value) { Add(code, LCString(value)); }

    void Line(LCString const & layer, LCString const & lineType, LCColor const & colour, double x1, double y1,
              double x2, double y2)
    {
        Entity("LINE", layer, colour);
        Add(6, lineType);
        Point(10, x1, y1);
        Point(11, x2, y2);
    }
    /// Turned by 90 degrees, its lower left corner at a point.
    void UprightText(LCString const & layer, LCColor const & colour, double x, double y, double height,
                     LCString const & text)
    {
        Entity("TEXT", layer, colour);
        Point(10, x, y);
        Add(40, height);
        Add(1, text);
        Add(50, 90.0);
    }
    LCString const & Str() const { return movText; }

private:
    void Entity(LCString const & kind, LCString const & layer, LCColor const & colour)
    {
        Add(0, kind);
        Add(8, layer);
        Add(62, LCDXFColor::Color_To_ACI(colour));
    }
    void Point(int code, double x, double y)
    {
        Add(code, x);
        Add(code + 10, y);
        Add(code + 20, 0.0);
    }

    LCString movText;
};

}  // namespace

LCString DrawDxf(Part const & part, FlatPattern const & pattern)
{
    Dxf dxf;
    dxf.Add(0, "SECTION");
    dxf.Add(2, "HEADER");
    dxf.Add(9, "$ACADVER");
    dxf.Add(1, "AC1009");
    dxf.Add(0, "ENDSEC");

    // The one line type that readers do not know by themselves.
    dxf.Add(0, "SECTION");
    dxf.Add(2, "TABLES");
    dxf.Add(0, "TABLE");
    dxf.Add(2, "LTYPE");
    dxf.Add(70, 1);
    dxf.Add(0, "LTYPE");
    dxf.Add(2, "DASHDOT");
    dxf.Add(70, 0);
    dxf.Add(3, "bend line");
    dxf.Add(72, 65);
    dxf.Add(73, 4);
    dxf.Add(40, 12.0);
    for (double const dash : {8.0, -2.0, 0.0, -2.0}) dxf.Add(49, dash);
    dxf.Add(0, "ENDTAB");
    dxf.Add(0, "ENDSEC");

    dxf.Add(0, "SECTION");
    dxf.Add(2, "ENTITIES");
    LCColor const outline = LCDXFColor::White();
    double const corners[][2] = {
        {0.0, 0.0}, {pattern.length, 0.0}, {pattern.length, part.width}, {0.0, part.width}};
    for (int i = 0; i < 4; ++i) {
        auto const & from = corners[i];
        auto const & to = corners[(i + 1) % 4];
        dxf.Line("OUTLINE", "CONTINUOUS", outline, from[0], from[1], to[0], to[1]);
    }
    for (std::size_t i = 0; i < part.bends.size(); ++i) {
        Bend const & bend = part.bends[i];
        double const x = pattern.zones[i].line;
        LCColor const colour = bend.up ? LCColor(LCDXFColor::Cyan()) : LCColor(LCDXFColor::Red());
        dxf.Line("BEND", "DASHDOT", colour, x, 0.0, x, part.width);
        dxf.UprightText("TEXT", LCDXFColor::Yellow(), x - 1.0, 2.0, 3.0,
                        LCString(bend.up ? "UP " : "DOWN ") + LCString(bend.angle, -1, false) + " R" +
                            LCString(bend.innerRadius, -1, false));
    }
    dxf.Add(0, "ENDSEC");
    dxf.Add(0, "EOF");
    return dxf.Str();
}
