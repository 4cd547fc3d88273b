#include "documents/detail/XmlReader.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include "documents/detail/Access.h"
#include "documents/detail/FileAccess.h"
#include "documents/detail/FileForm.h"
#include "documents/detail/Progress.h"

namespace qrtcl::documents {

namespace {

std::string_view View(xmlChar const * text) { return reinterpret_cast<char const *>(text); }

std::string_view TrimWhiteSpace(std::string_view text)
{
    std::size_t const first = text.find_first_not_of(" \t\r\n");
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") + 1 - first);
}

std::string At(long line, long column)
{
    return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": ";
}

std::string TooMany(char const * what, std::size_t limit)
{
    return "more than " + std::to_string(limit) + " " + what;
}

/// The parser must not begin to convert: wide characters show in the first two bytes, all else is declared.
/// What is no declaration is left to the parser.
void RefuseOtherEncodings(std::string_view begin)
{
    std::string_view const mark = begin.substr(0, 2);
    bool other =
        mark.find('\0') != mark.npos || mark == "\xFE\xFF" || mark == "\xFF\xFE" || mark == "\x4C\x6F";

    std::string_view const declaration = begin.substr(0, begin.find("?>"));
    std::size_t const name = declaration.find("encoding");
    std::size_t const quote = declaration.find_first_of("\"'", name);
    std::size_t const start = declaration.find("<?xml");
    bool const declares = start == 0 || start == 3;  // a mark may come first
    if (declares && IsWhiteSpace(declaration.substr(start + 5, 1)) && name != begin.npos &&
        quote != begin.npos) {
        std::string_view const behind = declaration.substr(quote + 1);
        std::string const value(behind.substr(0, behind.find(declaration[quote])));
        other = other || !LCString(value).EqCI("UTF-8");
    }
    if (other) throw Failure{At(1, 1) + "another encoding than UTF-8"};
}

/// While one lives, all errors of the parser library on this thread go to a function. Where it is out of
/// memory it often does not say in which parser, drops a text and goes on.
class ErrorsOfThread {
public:
    ErrorsOfThread(void * argument, xmlStructuredErrorFunc function)
    {
        xmlSetStructuredErrorFunc(argument, function);
    }
    ErrorsOfThread(ErrorsOfThread const &) = delete;
    ErrorsOfThread & operator=(ErrorsOfThread const &) = delete;
    ~ErrorsOfThread() { xmlSetStructuredErrorFunc(mopFormerArgument, mopFormer); }

private:
    xmlStructuredErrorFunc const mopFormer = xmlStructuredError;
    void * const mopFormerArgument = xmlStructuredErrorContext;
};

/// Builds the tree from what the parser tells.
class XmlReader {
public:
    XmlReader(Source & source, std::size_t size, LHCParagraph & root, Progress & progress)
        : moSource(source), moRoot(root), moProgress(progress), mdvSize(static_cast<double>(size))
    {
        // The parser fetches piece by piece: of a whole text it would make a copy first.
        mopParser.reset(xmlCreateIOParserCtxt(nullptr, nullptr, &XmlReader::OnRead, nullptr, this,
                                              XML_CHAR_ENCODING_UTF8));
        if (mopParser == nullptr) throw std::bad_alloc();
        xmlCtxtUseOptions(mopParser.get(), XML_PARSE_HUGE | XML_PARSE_NOENT | XML_PARSE_NONET);
        mopParser->userData = this;
        SetHandlers(*mopParser->sax);
    }

    void Read()
    {
        xmlParseDocument(mopParser.get());
        if (mopThrown != nullptr) std::rethrow_exception(mopThrown);
        if (mopParser->wellFormed == 0) throw Failure{"not well-formed"};
        // For the parser a zero is an end too. A file can have them behind its text after a crash of the
        // system.
        if (mopParser->input->cur < mopParser->input->end) Fail("zero bytes behind the end");
    }

private:
    struct FreeParser {
        void operator()(xmlParserCtxtPtr parser) const
        {
            xmlFreeDoc(parser->myDoc);  // made for a broken entity declaration, whatever the handlers are
            xmlFreeParserCtxt(parser);
        }
    };

    static void SetHandlers(xmlSAXHandler & handlers)
    {
        handlers = {};
        handlers.initialized = 1;  // the plain interface: names with their prefix, all attributes in order
        handlers.internalSubset = [](void * self, auto...) { Guarded(self, &XmlReader::RefuseDoctype); };
        handlers.startElement = [](void * self, xmlChar const * name, xmlChar const ** attributes) {
            Guarded(self, &XmlReader::StartElement, name, attributes);
        };
        handlers.endElement = [](void * self, xmlChar const *) { Guarded(self, &XmlReader::EndElement); };
        handlers.characters = [](void * self, xmlChar const * text, int size) {
            Guarded(self, &XmlReader::AddText, text, size);
        };
        handlers.ignorableWhitespace = handlers.cdataBlock = handlers.characters;
    }

    /// The parser's versions differ in whether the error is constant.
    template <typename Error> static void OnError(void * self, Error * error)
    {
        Guarded(self, &XmlReader::HandleError, static_cast<xmlError const *>(error));
    }
    static int OnRead(void * self, char * bytes, int size)
    {
        int count = 0;
        Guarded(self, &XmlReader::Fetch, bytes, static_cast<std::size_t>(size), &count);
        return count;
    }

    /// The parser's own frames stand between: what is thrown waits until it has come back. Until then it is
    /// told that the text is at its end: stopping it is not safe in all of these calls.
    template <typename... Parameters, typename... Arguments>
    static void Guarded(void * self, void (XmlReader::*handle)(Parameters...), Arguments... arguments)
    {
        auto & reader = *static_cast<XmlReader *>(self);
        if (reader.mopThrown != nullptr) return;
        try {
            (reader.*handle)(arguments...);
        } catch (...) {
            reader.mopThrown = std::current_exception();
        }
    }

    void Fetch(char * bytes, std::size_t size, int * count)
    {
        if (movPiece.empty()) {
            bool const first = mivFetched == 0;
            movPiece = moSource.Next();
            if (first) RefuseOtherEncodings(movPiece);
        }
        if (HasTooManyAttributes()) Fail(TooMany("attributes", maximumAttributes));
        std::size_t const copied = movPiece.copy(bytes, size);
        movPiece.remove_prefix(copied);
        mivFetched += copied;
        *count = static_cast<int>(copied);
    }

    /// The parser compares each attribute of a tag with all the others before it tells of them, so this asks
    /// in between. Its room, two places for each and one for the value, at most doubles when it is full.
    bool HasTooManyAttributes() const
    {
        return mopParser->maxatts > static_cast<int>(4 * (maximumAttributes + 3));
    }

    std::string Position() const { return At(mopParser->input->line, mopParser->input->col); }
    [[noreturn]] void Fail(std::string const & what) const { throw Failure{Position() + what}; }

    void RefuseDoctype()
    {
        std::string const where = Position();
        xmlStopParser(mopParser.get());  // here it is safe, and no entity is even declared
        throw Failure{where + "a document type is not accepted"};
    }

    void StartElement(xmlChar const * name, xmlChar const ** attributes)
    {
        moProgress.Step([&] { return mdvSize == 0.0 ? 0.0 : static_cast<double>(mivFetched) / mdvSize; });
        if (mivLevel == maximumLevels) Fail(TooMany("levels", maximumLevels));
        if (mopAt == nullptr) {
            mopAt = &moRoot;
            Access::Rename(*mopAt, UnescapedName(View(name), movRoom));
        } else {
            Level & parent = moaLevels[mivLevel - 1];
            parent.hasText = parent.hasText || !IsWhiteSpace(TextOfLevel());
            if (!parent.hasText) movText.resize(parent.textBegin);
            mopAt = &Append(name);
        }
        moaLevels[mivLevel++] = {movText.size(), false};
        if (attributes != nullptr) AddAttributes(attributes);
    }

    /// The parser gives equal names by equal pointers.
    LHCParagraph & Append(xmlChar const * name)
    {
        KnownName & known = moaNames[reinterpret_cast<std::uintptr_t>(name) * 0x9E3779B97F4A7C15u >> 56];
        if (known.stored == name) return Access::Append(*mopAt, *known.name);
        LHCParagraph & child = Access::Append(*mopAt, UnescapedName(View(name), movRoom));
        known = {name, &Access::NameOf(child)};
        return child;
    }

    void AddAttributes(xmlChar const ** attributes)
    {
        std::string textRoom;
        std::size_t count = 0;
        for (; *attributes != nullptr; attributes += 2) {
            std::string_view const name = View(attributes[0]);
            std::string_view const text = Unescaped(View(attributes[1]), textRoom);
            if (name == valueAttribute) {
                Access::SetValue(*mopAt, text);
            } else if (++count > maximumAttributes) {
                Fail(TooMany("attributes", maximumAttributes));
            } else if (!Access::AddAttribute(*mopAt, UnescapedName(name, movRoom), text)) {
                Fail("attribute " + std::string(name) + " stands for one that is there");
            }
        }
    }

    void AddText(xmlChar const * text, int size)
    {
        movText.append(reinterpret_cast<char const *>(text), static_cast<std::size_t>(size));
    }

    void EndElement()
    {
        std::string_view text = TextOfLevel();
        if (Access::FirstOf(*mopAt) != nullptr) text = TrimWhiteSpace(text);
        if (!IsWhiteSpace(text) && Access::ValueOf(*mopAt) == nullptr)
            Access::SetValue(*mopAt, Unescaped(text, movRoom));
        movText.resize(moaLevels[--mivLevel].textBegin);
        mopAt = Access::ParentOf(*mopAt);
        if (namesStayNarrow && xmlDictSize(mopParser->dict) > mostNames) RenewNames();
    }

    /// The parser's table of names stays small however many it holds: a million would be searched in long
    /// chains. So it begins anew, with the names of the open elements: at the end of an element no others are
    /// in use.
    void RenewNames()
    {
        xmlParserCtxt & parser = *mopParser;
        std::unique_ptr<xmlDict, void (*)(xmlDictPtr)> names(xmlDictCreate(), &xmlDictFree);
        std::vector<xmlChar const **> uses{&parser.str_xml, &parser.str_xmlns, &parser.str_xml_ns};
        for (int i = 0; i < parser.nameNr; ++i) uses.push_back(&parser.nameTab[i]);
        std::vector<xmlChar const *> moved;
        for (xmlChar const ** const use : uses) {
            moved.push_back(xmlDictLookup(names.get(), *use, -1));
            if (moved.back() == nullptr) throw std::bad_alloc();
        }
        for (std::size_t i = 0; i < uses.size(); ++i) *uses[i] = moved[i];
        parser.name = moved.back();
        xmlDictFree(std::exchange(parser.dict, names.release()));
        moaNames.fill({});
    }

    /// What stood in the open element so far.
    std::string_view TextOfLevel() const
    {
        return std::string_view(movText).substr(moaLevels[mivLevel - 1].textBegin);
    }

    void HandleError(xmlError const * error)
    {
        if (error->code == XML_ERR_NO_MEMORY) throw std::bad_alloc();
        if (error->level != XML_ERR_FATAL || error->ctxt != mopParser.get()) return;
        if (error->message == nullptr) throw std::bad_alloc();
        std::string what(TrimWhiteSpace(error->message));
        // The parser's own text has the wrong line.
        if (error->code == XML_ERR_TAG_NAME_MISMATCH && error->str1 != nullptr && error->str2 != nullptr)
            what = "the element " + std::string(error->str1) + " ends as " + error->str2;
        throw Failure{At(error->line, error->int2) + what};
    }

    Source & moSource;
    LHCParagraph & moRoot;
    Progress & moProgress;
    double mdvSize;
    std::string_view movPiece;  ///< what the parser has not fetched of the last piece
    std::size_t mivFetched = 0;
    std::unique_ptr<xmlParserCtxt, FreeParser> mopParser;
    std::exception_ptr mopThrown;

    static constexpr bool namesStayNarrow = LIBXML_VERSION < 21200;
    static constexpr int mostNames = 16384;
    struct KnownName {
        xmlChar const * stored = nullptr;
        Name * name = nullptr;
    };
    std::array<KnownName, 256> moaNames{};
    LHCParagraph * mopAt = nullptr;  ///< the open element
    std::size_t mivLevel = 0;
    struct Level {
        std::size_t textBegin;  ///< in `movText`
        bool hasText;           ///< more than white space stood before its last child
    };
    std::array<Level, maximumLevels> moaLevels;
    std::string movText;
    std::string movRoom;
    ErrorsOfThread const movErrors{this, &XmlReader::OnError};
};

}  // namespace

void ReadXml(Source & source, std::size_t size, LHCParagraph & root, Progress & progress)
{
    [[maybe_unused]] static bool const initialised = (xmlInitParser(), true);  // for two threads at once
    XmlReader(source, size, root, progress).Read();
}

}  // namespace qrtcl::documents
