// Prints the stored form of every kind of value, as it stands in a document. It is the same on every machine
// and in every locale and time zone; `scripts/check samebytes` holds that.

#include <clocale>
#include <cstdio>
#include <limits>
#include <locale>

#include "QRTCL_DataTypes.h"
#include "documents/LHCDocument.h"

namespace {

void WriteNumbers(LCParagraph & root)
{
    root.SetParameterAsBool("flag", true);
    root.SetParameterAsInteger("integer", std::numeric_limits<int>::min());
    root.SetParameterAsLong("long", 1234567);
    root.SetParameterAsDouble("thickness", 1.5, -1);
    root.SetParameterAsDouble("large", 1234567.891, 3);
    double const numbers[] = {1.0 / 3.0,
                              -0.0,
                              1e-12,
                              1e22,
                              0.1 + 0.2,
                              LCMath::RoundToDec(1.005, 2),
                              LCMath::DegToRad(30.0),
                              LCMath::sinDeg(30.0),
                              LCMath::CeilToDec(1.001, 2)};
    LCDoubleVector doubles;
    for (double const number : numbers) doubles.push_back(number);
    root.SetParameterAsDoubleVector("doubles", doubles);
    double nullable = LCUnitMan::ConvertDistance(1000.5, 0, 1);
    root.SetParameterAsNullableDouble("nullable", &nullable, 6);
    LCIntVector integers(2, -1);
    root.SetParameterAsIntVector("integers", integers);
}

void WriteTexts(LCParagraph & root)
{
    LCString const text("I\xC4\xE4\xFFi <&> \"_x0041_\"");
    LCStringList list;
    for (LCString const & line : {text, text.UpperCase(), text.LowerCase(), LCBase64::Encode(text)}) {
        list.AddTail(line);
    }
    list.SortCI();
    root.SetParameterAsString("text", text, true);
    root.SetParameterAsStringList("list", list);
    root.SetParameterAsMultiLineString("lines", "a\n\nb\r");
    root.SetParameterAsGUID("guid", LCGUID("{6ba7b810-9dad-11d1-80b4-00c04fd430c8}"));
    root.SetParameterAsString("key", LCKeyIDRev("part", 2, -1).Str(), true);
    root.SetParameterAsBarCode("code", LCBarCode(LCBarCode::BCT_QR, "x 1"));
}

void WriteTimesAndColours(LCParagraph & root)
{
    LCDateTime const date(2024, 3, 31, 2, 30, 0, 250, 60);
    root.SetParameterAsDateTime("date", date);
    root.SetParameterAsString("formatted", date.StrFormat("YYYY-MM-DD HH:mm:SS.sss tt"), true);
    root.SetParameterAsTimeSpan("span", LCTimeSpan(93784.005));
    root.SetParameterAsColor("colour", LCColorRed());
    root.SetParameterAsTRGBColorValue("trgb", LCColor(255, 0, 0, 15, 255));
    root.SetParameterAsTBGRColorValue("tbgr", LCColor(1, 2, 3));
}

}  // namespace

int main()
{
    std::setlocale(LC_ALL, "");
    std::locale::global(std::locale(""));
    LHCDocument document;
    WriteNumbers(document.GetRootParagraph());
    WriteTexts(document.GetRootParagraph());
    WriteTimesAndColours(document.GetRootParagraph());
    LCString xml;
    if (!document.SaveToText(xml)) return 1;
    std::fwrite(xml.c_str(), 1, xml.size(), stdout);
    return 0;
}
