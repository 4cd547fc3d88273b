#include "documents/LHCDocument.h"

#include <exception>
#include <new>
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

constexpr char const * outOfMemory = "out of memory";  // short enough to need none

LCString ErrorText(LCString const & path, std::string const & what)
{
    return path.empty() ? what : path.str() + ": " + what;
}

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
    movErrorText.clear();
    try {
        try {
            Progress progress(mopInfo, mopCancel, what + (path.empty() ? "" : ' ' + path.str()));
            operation(progress);
            return true;
        } catch (Failure const & failure) {
            movErrorText = ErrorText(path, failure.text);
        } catch (std::bad_alloc const &) {
            movErrorText = ErrorText(path, outOfMemory);
        } catch (std::exception const & failure) {
            movErrorText = ErrorText(path, failure.what());
        } catch (...) {
            movErrorText = ErrorText(path, "stopped by an exception");
        }
    } catch (std::bad_alloc const &) {
        movErrorText = outOfMemory;
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
