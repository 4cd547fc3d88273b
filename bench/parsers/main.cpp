// Three parsers on a stored document of a million parameters: time per parameter without building a tree of
// ours, and how many documents that are not well-formed each of them takes.

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <string>

#include <expat.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <pugixml.hpp>

#include "documents/LHCDocument.h"
#include "time/LCDateTime.h"

namespace {

constexpr int parameters = 1000000;

/// Parts of ten parameters each; every fourth is a date, which has eight children.
LCString StoredText()
{
    LHCDocument document;
    for (int i = 0; i < parameters;) {
        LCParagraph & part = *document.GetRootParagraph().CreateParagraph("Part");
        for (int k = 0; k < 10; ++k, ++i) {
            LCString const name = LCString("Parameter") + LCString(k);
            switch (i % 4) {
            case 0: part.SetParameterAsInteger(name, i); break;
            case 1: part.SetParameterAsDouble(name, i * 0.731, 3); break;
            case 2: part.SetParameterAsString(name, "Sheet steel", true); break;
            default:
                part.SetParameterAsDateTime(name,
                                            LCDateTime(2024, 3, i % 28 + 1, i % 24, i % 60, 30, 250, 60));
            }
        }
    }
    LCString xml;
    document.SaveToText(xml);
    return xml;
}

bool Expat(std::string const & xml)
{
    XML_Parser const parser = XML_ParserCreate("UTF-8");
    XML_SetElementHandler(
        parser, [](void *, XML_Char const *, XML_Char const **) {}, [](void *, XML_Char const *) {});
    XML_SetCharacterDataHandler(parser, [](void *, XML_Char const *, int) {});
    bool const good = XML_Parse(parser, xml.data(), static_cast<int>(xml.size()), 1) == XML_STATUS_OK;
    XML_ParserFree(parser);
    return good;
}

bool LibXml2(std::string const & xml)
{
    std::string_view rest = xml;
    auto const read = [](void * from, char * bytes, int size) {
        auto & left = *static_cast<std::string_view *>(from);
        std::size_t const count = left.copy(bytes, static_cast<std::size_t>(size));
        left.remove_prefix(count);
        return static_cast<int>(count);
    };
    xmlParserCtxtPtr const parser =
        xmlCreateIOParserCtxt(nullptr, nullptr, read, nullptr, &rest, XML_CHAR_ENCODING_UTF8);
    xmlCtxtUseOptions(parser, XML_PARSE_HUGE | XML_PARSE_NOENT);
    *parser->sax = {};
    parser->sax->initialized = 1;
    parser->sax->startElement = [](void *, xmlChar const *, xmlChar const **) {};
    parser->sax->endElement = [](void *, xmlChar const *) {};
    parser->sax->characters = [](void *, xmlChar const *, int) {};
    parser->sax->ignorableWhitespace = parser->sax->characters;
    xmlParseDocument(parser);
    bool const good = parser->wellFormed != 0;
    xmlFreeParserCtxt(parser);
    return good;
}

bool PugiXml(std::string const & xml)
{
    pugi::xml_document document;
    unsigned const options = pugi::parse_default | pugi::parse_embed_pcdata;
    return static_cast<bool>(document.load_buffer(xml.data(), xml.size(), options, pugi::encoding_utf8));
}

// Each breaks one rule, and xmllint refuses them all.
std::string const broken[] = {
    "<a>&undefined;</a>",
    "<a>&</a>",
    "<a>\x01</a>",
    "<a>\xFF</a>",
    "<a>\xC0\x80</a>",
    "<a>\xED\xA0\x80</a>",
    "<a>\xEF\xBF\xBE</a>",
    "<a/><b/>",
    "<a/>text",
    "<a b='1' b='1'/>",
    "<a b='<'/>",
    "<a b='&'/>",
    "<1a/>",
    "<a>]]></a>",
    "<a><!-- -- --></a>",
    "<a>&#0;</a>",
    "<a>&#xD800;</a>",
    "<a></b>",
    "<a>",
    "<a b=c/>",
    "<a b='1'c='2'/>",
    " <?xml version='1.0'?><a/>",
    "<?xml?><a/>",
    "<a><?xml ?></a>",
    "text",
    "",
};

}  // namespace

int main()
{
    std::string const xml = StoredText().str();
    std::printf("%d parameters, %.0f MB\n", parameters, static_cast<double>(xml.size()) / 1e6);
    struct {
        char const * name;
        bool (*parse)(std::string const &);
    } const parsers[] = {{"expat", Expat}, {"libxml2", LibXml2}, {"pugixml", PugiXml}};
    for (auto const & parser : parsers) {
        double best = 1e9;
        for (int round = 0; round < 5; ++round) {
            std::clock_t const begin = std::clock();
            if (!parser.parse(xml)) return 1;
            best = std::min(best, static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
        }
        auto const taken = std::count_if(std::begin(broken), std::end(broken), parser.parse);
        std::printf("%-8s %4.0f ns per parameter, takes %ld of %zu broken documents\n", parser.name,
                    best * 1e9 / parameters, static_cast<long>(taken), std::size(broken));
    }
}
