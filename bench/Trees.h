#pragma once

// The tree of named parameters in ours and in the peers: one document, built, read and written by the same
// steps.
//
// A tree of a peer has `Node`, and `AddPart`, `Add`, `Find`, `Set`, `Text`, `ForEachPart`, `Save` and `Load`.
// Numbers are formatted and read by the same code in all of them.

#include <memory>
#include <string>
#include <string_view>

#include "Bench.h"
#include "documents/LHCDocument.h"
#include "paragraph/LCParagraphList.h"
#include "time/LCDateTime.h"

#ifdef PEER_BOOST
#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>
#include <sstream>
#endif
#ifdef PEER_LIBXML2
#include <libxml/parser.h>
#include <libxml/tree.h>
#endif
#ifdef PEER_NLOHMANN
#include <nlohmann/json.hpp>
#endif
#ifdef PEER_PUGIXML
#include <pugixml.hpp>
#endif
#ifdef PEER_QT_XML
#include <QDomDocument>
#endif
#ifdef PEER_TINYXML2
#include <tinyxml2.h>
#endif

namespace bench {

inline constexpr int parametersOfPart = 10;

/// Of ten parameters; every fourth parameter is a date, which has eight children.
struct Parameters {
    LCString names[parametersOfPart];
    LCString text = "Sheet steel";

    Parameters()
    {
        for (int k = 0; k < parametersOfPart; ++k) names[k] = LCString("Parameter") + LCString(k);
    }
    static double Number(int i) { return i * 0.731; }
    static LCDateTime Date(int i) { return {2024, 3, i % 28 + 1, i % 24, i % 60, 30, 250, 60}; }
};

/// The eight fields of a date, in the order in which they are stored.
template <typename Do> void ForEachField(Do what)
{
    static constexpr char const * names[] = {"year", "month", "day", "hour", "min", "sec", "msec", "TZ"};
    for (char const * const name : names) what(name);
}

struct OurTree {
    static constexpr char const * name = "ours";

    void Build(int parameters)
    {
        Parameters const p;
        for (int i = 0; i < parameters;) {
            LCParagraph & part = *document.GetRootParagraph().CreateParagraph("Part");
            for (LCString const & parameter : p.names) {
                switch (i % 4) {
                case 0: part.SetParameterAsInteger(parameter, i); break;
                case 1: part.SetParameterAsDouble(parameter, Parameters::Number(i), 3); break;
                case 2: part.SetParameterAsString(parameter, p.text, true); break;
                default: part.SetParameterAsDateTime(parameter, Parameters::Date(i));
                }
                ++i;
            }
        }
    }
    double Read()
    {
        Parameters const p;
        LCDateTime const none;
        LCParagraphList parts;
        document.GetRootParagraph().GetParagraphs(parts);
        double sum = 0;
        int i = 0;
        for (LCParagraph * const part : parts) {
            for (LCString const & parameter : p.names) {
                switch (i++ % 4) {
                case 0: sum += part->GetParameterAsInteger(parameter, 0); break;
                case 1: sum += part->GetParameterAsDouble(parameter, 0); break;
                case 2: sum += part->GetParameterAsString(parameter, LCString(), false).GetLength(); break;
                default: {
                    LCDateTime const d = part->GetParameterAsDateTime(parameter, none);
                    sum += d.GetYear() + d.GetMonth() + d.GetDay() + d.GetHour() + d.GetMin() + d.GetSec() +
                           d.GetMSec() + d.GetTimeZoneBias();
                }
                }
            }
        }
        return sum;
    }
    std::string Save()
    {
        LCString text;
        document.SaveToText(text);
        return text.str();
    }
    bool Load(std::string const & text) { return document.LoadFromText(LCString(text)); }

    void BuildChildren(std::vector<LCString> const & names)
    {
        for (LCString const & child : names)
            document.GetRootParagraph().SetParameterAsString(child, "1", true);
        document.SetFindExisting(true);
    }
    void WriteChild(LCString const & child, LCString const & text)
    {
        document.GetRootParagraph().SetParameterAsString(child, text, true);
    }
    std::size_t LengthOfChild(LCString const & child)
    {
        return document.GetRootParagraph().GetParameterAsString(child, LCString(), false).size();
    }

    LHCDocument document;
};

/// The same steps over the operations of a peer.
template <typename Peer> struct PeerTree : Peer {
    using Node = typename Peer::Node;

    void Build(int parameters)
    {
        Parameters const p;
        for (int i = 0; i < parameters;) {
            Node const part = this->AddPart();
            for (LCString const & parameter : p.names) {
                Node const node = this->Add(part, parameter.c_str());
                switch (i % 4) {
                case 0: this->Set(node, LCString(i).c_str()); break;
                case 1: this->Set(node, LCString(Parameters::Number(i), 3, true).c_str()); break;
                case 2: this->Set(node, p.text.c_str()); break;
                default: {
                    LCDateTime const d = Parameters::Date(i);
                    int const fields[] = {d.GetYear(), d.GetMonth(), d.GetDay(),  d.GetHour(),
                                          d.GetMin(),  d.GetSec(),   d.GetMSec(), d.GetTimeZoneBias()};
                    int const * field = fields;
                    ForEachField([&](char const * each) {
                        this->Set(this->Add(node, each), LCString(*field++).c_str());
                    });
                }
                }
                ++i;
            }
        }
    }
    double Read()
    {
        Parameters const p;
        double sum = 0;
        int i = 0;
        this->ForEachPart([&](Node const & part) {
            for (LCString const & parameter : p.names) {
                Node const node = this->Find(part, parameter.c_str());
                switch (i++ % 4) {
                case 0: sum += LCString(this->Text(node)).AsInt(); break;
                case 1: sum += LCString(this->Text(node)).AsDouble(); break;
                case 2: sum += LCString(this->Text(node)).GetLength(); break;
                default:
                    ForEachField([&](char const * each) {
                        sum += LCString(this->Text(this->Find(node, each))).AsInt();
                    });
                }
            }
        });
        return sum;
    }
    void BuildChildren(std::vector<LCString> const & names)
    {
        part_ = std::make_unique<Node>(this->AddPart());
        for (LCString const & child : names) this->Set(this->Add(*part_, child.c_str()), "1");
    }
    void WriteChild(LCString const & child, LCString const & text)
    {
        this->Set(this->Find(*part_, child.c_str()), text.c_str());
    }
    std::size_t LengthOfChild(LCString const & child)
    {
        return LCString(this->Text(this->Find(*part_, child.c_str()))).size();
    }

private:
    std::unique_ptr<Node> part_;
};

#ifdef PEER_PUGIXML
struct PugiXml {
    static constexpr char const * name = "pugixml";
    using Node = pugi::xml_node;

    PugiXml() { document.append_child("Document"); }
    Node AddPart() { return document.document_element().append_child("Part"); }
    static Node Add(Node parent, char const * child) { return parent.append_child(child); }
    static Node Find(Node const & parent, char const * child) { return parent.child(child); }
    static void Set(Node node, char const * text) { node.text().set(text); }
    static char const * Text(Node const & node) { return node.text().get(); }
    template <typename Do> void ForEachPart(Do what)
    {
        for (Node const part : document.document_element().children("Part")) what(part);
    }
    std::string Save()
    {
        struct Writer : pugi::xml_writer {
            void write(void const * bytes, std::size_t size) override
            {
                text.append(static_cast<char const *>(bytes), size);
            }
            std::string text;
        } writer;
        document.save(writer, "  ");
        return std::move(writer.text);
    }
    bool Load(std::string const & text)
    {
        return static_cast<bool>(document.load_buffer(text.data(), text.size()));
    }

    pugi::xml_document document;
};
#endif

#ifdef PEER_TINYXML2
struct TinyXml2 {
    static constexpr char const * name = "tinyxml2";
    using Node = tinyxml2::XMLElement *;

    TinyXml2() { document.InsertFirstChild(document.NewElement("Document")); }
    Node AddPart() { return Add(document.RootElement(), "Part"); }
    static Node Add(Node parent, char const * child) { return parent->InsertNewChildElement(child); }
    static Node Find(Node parent, char const * child) { return parent->FirstChildElement(child); }
    static void Set(Node node, char const * text) { node->SetText(text); }
    static char const * Text(Node node) { return node->GetText(); }
    template <typename Do> void ForEachPart(Do what)
    {
        for (Node part = document.RootElement()->FirstChildElement(); part != nullptr;
             part = part->NextSiblingElement())
            what(part);
    }
    std::string Save()
    {
        tinyxml2::XMLPrinter printer;
        document.Print(&printer);
        return printer.CStr();
    }
    bool Load(std::string const & text)
    {
        return document.Parse(text.data(), text.size()) == tinyxml2::XML_SUCCESS;
    }

    tinyxml2::XMLDocument document;
};
#endif

#ifdef PEER_LIBXML2
struct LibXml2 {
    static constexpr char const * name = "libxml2";
    using Node = xmlNodePtr;

    LibXml2() : document(xmlNewDoc(nullptr))
    {
        xmlDocSetRootElement(document, xmlNewNode(nullptr, AsXml("Document")));
    }
    LibXml2(LibXml2 const &) = delete;
    LibXml2 & operator=(LibXml2 const &) = delete;
    ~LibXml2() { xmlFreeDoc(document); }

    Node AddPart() { return Add(xmlDocGetRootElement(document), "Part"); }
    static Node Add(Node parent, char const * child)
    {
        return xmlNewChild(parent, nullptr, AsXml(child), nullptr);
    }
    static Node Find(Node parent, char const * child)
    {
        for (Node node = parent->children; node != nullptr; node = node->next)
            if (node->type == XML_ELEMENT_NODE && xmlStrEqual(node->name, AsXml(child)) != 0) return node;
        return nullptr;
    }
    static void Set(Node node, char const * text) { xmlNodeSetContent(node, AsXml(text)); }
    static char const * Text(Node node) { return reinterpret_cast<char const *>(node->children->content); }
    template <typename Do> void ForEachPart(Do what)
    {
        for (Node part = xmlDocGetRootElement(document)->children; part != nullptr; part = part->next)
            if (part->type == XML_ELEMENT_NODE) what(part);
    }
    std::string Save()
    {
        xmlChar * text = nullptr;
        int size = 0;
        xmlDocDumpFormatMemory(document, &text, &size, 1);
        std::string const saved(reinterpret_cast<char const *>(text), static_cast<std::size_t>(size));
        xmlFree(text);
        return saved;
    }
    bool Load(std::string const & text)
    {
        xmlFreeDoc(document);
        document = xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                                 XML_PARSE_HUGE | XML_PARSE_NOBLANKS);
        return document != nullptr;
    }

    xmlDocPtr document;

private:
    static xmlChar const * AsXml(char const * text) { return reinterpret_cast<xmlChar const *>(text); }
};
#endif

#ifdef PEER_QT_XML
struct QtDom {
    static constexpr char const * name = "qt-dom";
    using Node = QDomElement;

    QtDom() { document.appendChild(document.createElement("Document")); }
    Node AddPart() { return Add(document.documentElement(), "Part"); }
    Node Add(Node parent, char const * child)
    {
        return parent.appendChild(document.createElement(QString::fromUtf8(child))).toElement();
    }
    static Node Find(Node const & parent, char const * child)
    {
        return parent.firstChildElement(QString::fromUtf8(child));
    }
    void Set(Node node, char const * text)
    {
        QDomNode const old = node.firstChild();
        if (old.isNull()) {
            node.appendChild(document.createTextNode(QString::fromUtf8(text)));
        } else {
            old.toText().setData(QString::fromUtf8(text));
        }
    }
    static std::string Text(Node const & node) { return node.text().toStdString(); }
    template <typename Do> void ForEachPart(Do what)
    {
        for (Node part = document.documentElement().firstChildElement(); !part.isNull();
             part = part.nextSiblingElement())
            what(part);
    }
    std::string Save() { return document.toByteArray(2).toStdString(); }
    bool Load(std::string const & text) { return document.setContent(QByteArray::fromStdString(text)); }

    QDomDocument document;
};
#endif

#ifdef PEER_NLOHMANN
/// Stores JSON.
struct Nlohmann {
    static constexpr char const * name = "nlohmann";
    using Node = nlohmann::json *;

    Node AddPart() { return &document["Part"].emplace_back(nlohmann::json::object()); }
    static Node Add(Node parent, char const * child) { return &(*parent)[child]; }
    static Node Find(Node parent, char const * child) { return &*parent->find(child); }
    static void Set(Node node, char const * text) { *node = text; }
    static std::string const & Text(Node node) { return node->get_ref<std::string const &>(); }
    template <typename Do> void ForEachPart(Do what)
    {
        for (auto & part : document["Part"]) what(&part);
    }
    std::string Save() { return document.dump(2); }
    bool Load(std::string const & text)
    {
        document = nlohmann::json::parse(text);
        return true;
    }

    nlohmann::json document;
};
#endif

#ifdef PEER_BOOST
struct PropertyTree {
    static constexpr char const * name = "boost-ptree";
    using Tree = boost::property_tree::ptree;
    using Node = Tree *;

    PropertyTree() { document.push_back({"Document", Tree()}); }
    Node AddPart() { return Add(&document.front().second, "Part"); }
    static Node Add(Node parent, char const * child) { return &parent->push_back({child, Tree()})->second; }
    static Node Find(Node parent, char const * child) { return &parent->find(child)->second; }
    static void Set(Node node, char const * text) { node->data() = text; }
    static std::string const & Text(Node node) { return node->data(); }
    template <typename Do> void ForEachPart(Do what)
    {
        for (auto & part : document.front().second) what(&part.second);
    }
    std::string Save()
    {
        std::ostringstream stream;
        boost::property_tree::xml_writer_settings<std::string> const indented(' ', 2);
        boost::property_tree::write_xml(stream, document, indented);
        return std::move(stream).str();
    }
    bool Load(std::string const & text)
    {
        std::istringstream stream(text);
        boost::property_tree::read_xml(stream, document, boost::property_tree::xml_parser::trim_whitespace);
        return true;
    }

    Tree document;
};
#endif

/// Calls `what` with ours and each peer, as `what.template operator()<Tree>()`.
template <typename Do> void ForEachTree(Do what)
{
    what.template operator()<OurTree>();
#ifdef PEER_PUGIXML
    what.template operator()<PeerTree<PugiXml>>();
#endif
#ifdef PEER_TINYXML2
    what.template operator()<PeerTree<TinyXml2>>();
#endif
#ifdef PEER_LIBXML2
    what.template operator()<PeerTree<LibXml2>>();
#endif
#ifdef PEER_QT_XML
    what.template operator()<PeerTree<QtDom>>();
#endif
#ifdef PEER_NLOHMANN
    what.template operator()<PeerTree<Nlohmann>>();
#endif
#ifdef PEER_BOOST
    what.template operator()<PeerTree<PropertyTree>>();
#endif
}

}  // namespace bench
