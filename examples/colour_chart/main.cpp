// Writes the colour chart: one HTML page that shows every named colour of the family by group, and the
// colours of drawings by their index. The page needs nothing but itself.

#include <cstdio>
#include <vector>

#include "collections/LCStringList.h"
#include "colour/LCDXFColor.h"
#include "colour/LCNamedColors.h"

namespace {

struct Named {
    LCString name;
    LCColor colour;
};

struct Group {
    LCString title;
    LCString text;
    std::vector<Named> colours;
};

std::vector<Group> Groups()
{
#define QRTCL_COLOUR(name, ...) {#name, name()},
    return {
        {"Basic colours",
         "Several names share a value. Orange, pink and sky blue differ from the web colours of those names.",
         {
#include "colour/lists/Basic.inc"
         }},
        {"Machines, tools and drawings",
         "The parts of machine models, tools, backgrounds and annotations.",
         {
#include "colour/lists/Machine.inc"
         }},
        {"Web colours",
         "The extended colour keywords of CSS.",
         {
#include "colour/lists/Web.inc"
         }},
        {"System colours",
         "Indexes into the platform's table. The library carries them and never resolves them to a colour.",
         {
#include "colour/lists/System.inc"
         }},
    };
#undef QRTCL_COLOUR
}

/// Only a plain colour can be shown.
bool HasSwatch(LCColor const & colour) { return colour.GetT() == 0; }

LCString Channels(LCColor const & colour, LCString const & separator)
{
    return LCString(colour.GetR()) + separator + LCString(colour.GetG()) + separator +
           LCString(colour.GetB());
}

LCString ValueText(LCColor const & colour)
{
    if (colour.GetT() == 255) return LCString("system colour ") + LCString(colour.GetTRGB() & 0xFFFFFF);
    LCString text = Channels(colour, ", ");
    if (colour.GetT() != 0) text = LCString("type ") + LCString(colour.GetT()) + ": " + text;
    if (colour.GetA() != 255) text += LCString(", alpha ") + LCString(colour.GetA());
    return text;
}

/// "#RRGGBBAA".
LCString CssColour(LCColor const & colour)
{
    LCString text("#");
    for (int const field : {colour.GetR(), colour.GetG(), colour.GetB(), colour.GetA()}) {
        text += LCString(field, 2, '0', true);
    }
    return text;
}

/// A name that a browser may break before each word.
LCString Breakable(LCString const & name)
{
    LCString html;
    for (char const c : name.str()) {
        if (c >= 'A' && c <= 'Z' && !html.IsEmpty()) html += "<wbr>";
        html += c;
    }
    return html;
}

LCString Card(Named const & named)
{
    LCString const swatch =
        HasSwatch(named.colour)
            ? LCString("<span class=\"frame\"><span class=\"swatch\" style=\"background-color:") +
                  CssColour(named.colour) + "\"></span></span>"
            : LCString();
    return LCString("<li data-name=\"") + named.name + "\">" + swatch + "<span><code>" +
           Breakable(named.name) + "</code><span class=\"value\">" + ValueText(named.colour) +
           "</span></span></li>";
}

LCString Cell(int index, LCColor const & colour, LCString const & name)
{
    int const brightness = 299 * colour.GetR() + 587 * colour.GetG() + 114 * colour.GetB();
    LCString const number(index);
    return LCString("<li class=\"swatch\" data-name=\"ACI ") + number + "\" data-value=\"" +
           ValueText(colour) + "\" title=\"" + number + ": " + ValueText(colour) +
           "\" style=\"background-color:" + CssColour(colour) +
           ";color:" + (brightness > 128000 ? "#000" : "#fff") + "\">" + number +
           (name.IsEmpty() ? name : LCString("<small>") + name + "</small>") + "</li>";
}

void AddPalette(LCStringList & page)
{
    auto const & colours = LCDXFColor::GetACIColors();
    auto const cell = [&](int index, LCString const & name = LCString()) {
        page.AddTail(Cell(index, colours[static_cast<std::size_t>(index)], name));
    };
    page.AddTail("<section><h2>Drawing colours</h2>");
    page.AddTail(
        "<p>The colours that DXF drawings name by an index, 0 to 255. 0 stands for no colour when it is "
        "read. The first eight have classes in <code>LCDXFColor</code>.</p>");
    page.AddTail("<ul class=\"row\">");
    int index = 0;
    for (char const * const name : {"Black", "Red", "Yellow", "Green", "Cyan", "Blue", "Magenta", "White"}) {
        cell(index++, name);
    }
    cell(8);
    cell(9);
    page.AddTail("</ul><ul class=\"hues\">");
    // A column for each hue: the full shades from dark to bright, then the pale ones from bright to dark.
    for (int const shade : {8, 6, 4, 2, 0, 1, 3, 5, 7, 9}) {
        for (int hue = 0; hue < 24; ++hue) cell(10 + 10 * hue + shade);
    }
    page.AddTail("</ul><ul class=\"row\">");
    for (int gray = 250; gray < 256; ++gray) cell(gray);
    page.AddTail("</ul></section>");
}

constexpr char const * head = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Colour chart</title>
<style>
:root { color-scheme: light dark; --line: color-mix(in srgb, CanvasText 18%, Canvas); }
body { font: 15px/1.45 system-ui, sans-serif; max-width: 76rem; margin: 0 auto; padding: 1.5rem; }
header { display: flex; flex-wrap: wrap; gap: .5rem 2rem; align-items: baseline; justify-content: space-between; }
h1 { font-size: 1.8rem; margin: 0; }
h2 { font-size: 1.2rem; margin: 2.2rem 0 .2rem; padding-top: .6rem; border-top: 1px solid var(--line); }
p { margin: 0 0 .9rem; opacity: .75; max-width: 60ch; }
input { font: inherit; padding: .3rem .7rem; border: 1px solid var(--line); border-radius: 6px; min-width: 16rem; }
ul { list-style: none; margin: 0; padding: 0; }
.cards { display: grid; grid-template-columns: repeat(auto-fill, minmax(17rem, 1fr)); gap: .55rem 1.2rem; }
.cards li { display: flex; gap: .7rem; align-items: center; }
.cards li[hidden] { display: none; }
.cards code { display: block; font: 600 12.5px/1.3 ui-monospace, monospace; }
.value { font-size: 12.5px; opacity: .75; font-variant-numeric: tabular-nums; }
.frame { flex: none; width: 3rem; height: 2.3rem; border-radius: 6px; border: 1px solid var(--line);
  overflow: hidden; background: repeating-conic-gradient(#bbb 0% 25%, #fff 0% 50%) 0 0 / 12px 12px; }
.frame .swatch { display: block; width: 100%; height: 100%; }
.row, .hues { display: grid; gap: 2px; margin-bottom: .6rem; overflow-x: auto; }
.row { grid-template-columns: repeat(10, minmax(4rem, 1fr)); }
.hues { grid-template-columns: repeat(24, minmax(1.9rem, 1fr)); }
.row li, .hues li { display: grid; place-content: center; text-align: center; height: 2rem; border-radius: 3px;
  font-size: 11px; line-height: 1.2; font-variant-numeric: tabular-nums; }
.row li { height: 2.8rem; font-size: 13px; border: 1px solid var(--line); }
</style>
</head>
<body>
<header><h1>Colour chart</h1><input type="search" placeholder="Find a name or a value" aria-label="Find"></header>
)";

constexpr char const * foot = R"(<script>
document.querySelector("input").addEventListener("input", event => {
  const wanted = event.target.value.toLowerCase();
  for (const card of document.querySelectorAll(".cards li"))
    card.hidden = !card.textContent.toLowerCase().includes(wanted);
});
</script>
</body>
</html>)";

LCString Page()
{
    LCStringList page;
    page.AddTail(head);
    for (Group const & group : Groups()) {
        page.AddTail(LCString("<section><h2>") + group.title + "</h2><p>" + group.text +
                     "</p><ul class=\"cards\">");
        for (Named const & named : group.colours) page.AddTail(Card(named));
        page.AddTail("</ul></section>");
    }
    AddPalette(page);
    page.AddTail(foot);
    return page.Str('\n') + "\n";
}

/// What the page has to show, a line for each colour: its name, its value and the colour of its swatch.
LCString List()
{
    LCStringList lines;
    auto const add = [&](LCString const & name, LCColor const & colour) {
        LCString const swatch =
            HasSwatch(colour) ? Channels(colour, " ") + " " + LCString(colour.GetA()) : LCString("none");
        lines.AddTail(name + "\t" + ValueText(colour) + "\t" + swatch);
    };
    for (Group const & group : Groups()) {
        for (Named const & named : group.colours) add(named.name, named.colour);
    }
    for (int index = 0; index < 256; ++index) {
        add(LCString("ACI ") + LCString(index), LCDXFColor::GetACIColors()[static_cast<std::size_t>(index)]);
    }
    return lines.Str('\n') + "\n";
}

}  // namespace

int main(int count, char ** arguments)
{
    LCString const argument(count == 2 ? arguments[1] : "");
    if (argument == "--list") {
        LCString const list = List();
        return std::fwrite(list.c_str(), 1, list.size(), stdout) == list.size() ? 0 : 1;
    }
    if (argument.IsEmpty() || argument.Left(1) == "-") {
        std::puts("Usage: colour_chart FILE    writes the chart as an HTML page\n"
                  "       colour_chart --list  prints what the page shows");
        return argument == "--help" ? 0 : 2;
    }
    if (!Page().SaveToFile(argument)) {
        std::fprintf(stderr, "colour_chart: can't write %s\n", argument.c_str());
        return 1;
    }
    return 0;
}
