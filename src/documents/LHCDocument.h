#pragma once

#include "documents/Export.h"
#include "documents/LHCParagraph.h"
#include "paragraph/LCDocument.h"

/// A document in memory, and on file or as text in XML.
///
/// Every byte of names, values and attributes comes back as it was. A load or save that gives false leaves
/// the document, or the file, as it was; none throws. Comments and processing instructions of a loaded file
/// are dropped. A file with a document type, in another encoding than UTF-8, with more than 256 levels, with
/// more than 10,000 attributes in one paragraph, or with more than 10,000,000 bytes in a name or
/// 1,000,000,000 in an attribute is refused, and so is saving such a tree; in memory it works.
///
/// The paragraphs are bound to the document's switch. One thread at a time uses a document and its
/// paragraphs.
class QRTCL_DOCUMENTS_API LHCDocument : public LCDocument {
public:
    /// The root is called "Document" and has no contents.
    explicit LHCDocument(bool findExisting = false);
    template <typename T> explicit LHCDocument(T *) = delete;
    LHCDocument(LHCDocument const &) = delete;
    LHCDocument & operator=(LHCDocument const &) = delete;
    ~LHCDocument() override;

    /// The same object as long as the document lives; loading and clearing replace what it holds.
    LHCParagraph & GetRootParagraph() override { return movRoot; }
    void Clear() override;

    bool LoadFromFile(LCString const & path) override;
    /// Replaces the file as a whole and keeps its mode; a write-protected one is not replaced. Links are
    /// followed, but a file of several names keeps the old content under the others. What is no regular file
    /// is written straight into. When this gives true the file is on the disk; a process that is killed
    /// meanwhile leaves at most files "NAME.tmp-..." behind.
    bool SaveToFile(LCString const & path) override;
    bool LoadFromText(LCString const & xml) override;
    bool SaveToText(LCString & xml) override;
    /// Empty if it gave true. For bad XML, with line and column.
    LCString GetErrorText() const override { return movErrorText; }

    /// `info` is shown how far a long operation is. `cancel` is asked at its start and then at every few
    /// thousand paragraphs; a cancelled operation gives false.
    void SetProgress(LCInfo * info, LCCheckCancel * cancel) override;

private:
    template <typename Operation> bool Run(LCString const & path, char const * what, Operation operation);

    LHCParagraph movRoot;
    LCString movErrorText;
    LCInfo * mopInfo = nullptr;
    LCCheckCancel * mopCancel = nullptr;
};

/// Makes documents of this library.
class QRTCL_DOCUMENTS_API LHCDocumentCreator : public LCDocumentCreator {
public:
    LHCDocumentCreator() = default;
    LHCDocumentCreator(LHCDocumentCreator const &) = default;
    LHCDocumentCreator & operator=(LHCDocumentCreator const &) = default;
    ~LHCDocumentCreator() override;

    LCDocument * CreateDocument() override;
};
