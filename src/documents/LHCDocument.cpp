#include "documents/LHCDocument.h"

#include <exception>
#include <utility>

#include "documents/detail/Access.h"
#include "documents/detail/FileAccess.h"
#include "documents/detail/Progress.h"
#include "documents/detail/XmlReader.h"
#include "documents/detail/XmlWriter.h"

using namespace qrtcl::documents;

namespace {

class TextSource final : public Source {
public:
    explicit TextSource(std::string_view text) : movText(text) {}
    std::string_view Next() override { return std::exchange(movText, {}); }

private:
    std::string_view movText;
};

class TextSink final : public Sink {
public:
    void Write(std::string_view bytes) override { movText += bytes; }
    std::string movText;
};

}  // namespace

LHCDocument::LHCDocument(bool findExisting) : LCDocument(findExisting), movRoot(mbvFindExisting) {}

LHCDocument::~LHCDocument() = default;

void LHCDocument::Clear()
{
    LHCParagraph empty(mbvFindExisting);
    Access::SwapTrees(movRoot, empty);
}

/// Runs a load or save; whatever it throws becomes the error text.
template <typename Operation>
bool LHCDocument::Run(LCString const & path, char const * what, Operation operation)
{
    std::string const place = path.empty() ? "" : path.str() + ": ";
    try {
        movErrorText.clear();
        Progress progress(mopInfo, mopCancel, what + (path.empty() ? "" : ' ' + path.str()));
        operation(progress);
        return true;
    } catch (Failure const & failure) {
        movErrorText = place + failure.text;
    } catch (std::exception const & failure) {
        movErrorText = place + failure.what();
    } catch (...) {
        movErrorText = place + "stopped by an exception";
    }
    return false;
}

bool LHCDocument::LoadFromFile(LCString const & path)
{
    return Run(path, "Loading", [&](Progress & progress) {
        FileSource file(path.str());
        LHCParagraph loaded(mbvFindExisting);
        ReadXml(file, file.GetSize(), loaded, progress);
        Access::SwapTrees(movRoot, loaded);
    });
}

bool LHCDocument::LoadFromText(LCString const & xml)
{
    return Run({}, "Loading", [&](Progress & progress) {
        TextSource text(xml.str());
        LHCParagraph loaded(mbvFindExisting);
        ReadXml(text, xml.str().size(), loaded, progress);
        Access::SwapTrees(movRoot, loaded);
    });
}

bool LHCDocument::SaveToFile(LCString const & path)
{
    return Run(path, "Saving", [&](Progress & progress) {
        FileReplacement file(path.str());
        WriteXml(movRoot, file, progress);
        file.Commit();
    });
}

bool LHCDocument::SaveToText(LCString & xml)
{
    return Run({}, "Saving", [&](Progress & progress) {
        TextSink sink;
        WriteXml(movRoot, sink, progress);
        xml = std::move(sink.movText);
    });
}

void LHCDocument::SetProgress(LCInfo * info, LCCheckCancel * cancel)
{
    mopInfo = info;
    mopCancel = cancel;
}

LHCDocumentCreator::~LHCDocumentCreator() = default;

LCDocument * LHCDocumentCreator::CreateDocument() { return new LHCDocument; }
