#include <QRTCL_DataTypes.h>
#include <documents/LHCDocument.h>

int main()
{
    LHCDocument document;
    document.GetRootParagraph().SetParameterAsDouble("thickness", 1.5, -1);
    LCString xml;
    if (!document.SaveToText(xml)) return 1;
    LHCDocument loaded;
    if (!loaded.LoadFromText(xml)) return 1;
    return loaded.GetRootParagraph().GetParameterAsDouble("thickness", 0.0) == 1.5 ? 0 : 1;
}
