#pragma once

#include "foundation/Export.h"
#include "foundation/LCString.h"

class LCCheckCancel;
class LCInfo;
class LCParagraph;

/// A document: one tree of paragraphs and the file or text that it is loaded from and saved to.
class QRTCL_API LCDocument {
public:
    /// `findExisting` says whether the paragraphs overwrite existing parameters or always append new ones.
    explicit LCDocument(bool findExisting = false) : mbvFindExisting(findExisting) {}
    /// The name of a file is no bool.
    template <typename T> explicit LCDocument(T *) = delete;
    LCDocument(LCDocument const &) = default;
    LCDocument & operator=(LCDocument const &) = default;
    virtual ~LCDocument() = 0;

    virtual LCParagraph & GetRootParagraph() = 0;
    virtual void Clear() = 0;
    virtual bool LoadFromFile(LCString const & path) = 0;
    virtual bool SaveToFile(LCString const & path) = 0;
    virtual bool LoadFromText(LCString const & xml) = 0;
    virtual bool SaveToText(LCString & xml) = 0;
    /// Why the last load or save gave false.
    virtual LCString GetErrorText() const = 0;
    /// Who is told of long loads and saves, and who may cancel them; null for nobody. Not owned.
    virtual void SetProgress(LCInfo * info, LCCheckCancel * cancel) = 0;

    /// Takes effect at the next write, on all paragraphs that are bound to this document.
    void SetFindExisting(bool findExisting) { mbvFindExisting = findExisting; }
    template <typename T> void SetFindExisting(T *) = delete;
    bool GetFindExisting() const { return mbvFindExisting; }

protected:
    bool mbvFindExisting;
};

/// Makes documents of one concrete class.
class QRTCL_API LCDocumentCreator {
public:
    LCDocumentCreator() = default;
    LCDocumentCreator(LCDocumentCreator const &) = default;
    LCDocumentCreator & operator=(LCDocumentCreator const &) = default;
    virtual ~LCDocumentCreator();

    /// A new document that the caller owns.
    virtual LCDocument * CreateDocument() = 0;
};
