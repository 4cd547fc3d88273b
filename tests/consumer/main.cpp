#include <QRTCL_DataTypes.h>
#include <documents/LHCDocument.h>

int main()
{
    LHCDocument document, loaded;
    document.GetRootParagraph().SetParameterAsDouble("thickness", 1.5, -1);
    LCString xml;
    bool const back = document.SaveToText(xml) && loaded.LoadFromText(xml);
    return back && loaded.GetRootParagraph().GetParameterAsDouble("thickness", 0.0) == 1.5 ? 0 : 1;
}
