#include "PartFinder.h"

#include "documents/LHCDocument.h"

Part LoadPart(LCString const & file)
{
    LHCDocument document;
    if (!document.LoadFromFile(file)) throw std::runtime_error(document.GetErrorText().str());
    Part part;
    try {
        if (!part.ReadFromParagraph("part", document.GetRootParagraph()))
            throw std::runtime_error("there is no part");
    } catch (std::runtime_error const & e) {
        throw std::runtime_error((file + ": " + e.what()).str());
    }
    return part;
}

namespace {

class CodeReceiver {
public:
    LCString code;

private:
    void OnCode(LCString const & scanned) { code = scanned; }

    LCEvent1Param<LCString const &>::LCHook movHook{LCKeyboardDispatcher::Instance().OnCode, *this,
                                                    &CodeReceiver::OnCode};
};

}  // namespace

LCString Scan(LCString const & typed)
{
    LCKeyboardDispatcher & keyboard = LCKeyboardDispatcher::Instance();
    keyboard.SetHasPrefix(true);
    CodeReceiver receiver;
    LCString const characters = LCString(keyboard.GetPrefix()) + typed + keyboard.GetSuffix();
    for (char ch : characters.str()) keyboard.DoKeyPress(ch);
    return receiver.code;
}

LCString FindPart(LCString const & code, std::filesystem::path const & folder)
{
    LCStringList files;
    files.AddTail(SHIPPED_PART);
    std::error_code none;
    for (auto const & entry : std::filesystem::directory_iterator(folder, none)) {
        if (entry.path().extension() == ".xml") files.AddTail(entry.path().string());
    }
    LCString found;
    int revision = -1;
    for (LCString const & file : files) {
        Part const part = LoadPart(file);
        if (part.code.GetData() == code && part.revision > revision) {
            found = file;
            revision = part.revision;
        }
    }
    if (found.empty()) throw std::runtime_error(("no part has the code " + code).str());
    return found;
}
