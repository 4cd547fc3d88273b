#include "documents/detail/XmlWriter.h"

#include <string>
#include <string_view>

#include "documents/detail/Access.h"
#include "documents/detail/FileAccess.h"
#include "documents/detail/FileForm.h"
#include "documents/detail/Progress.h"

namespace qrtcl::documents {

namespace {

class XmlWriter {
public:
    explicit XmlWriter(Sink & sink) : moSink(sink) { movBuffer.reserve(2 * fullBuffer); }

    void Write(LHCParagraph const & root, Progress & progress)
    {
        auto const count = static_cast<double>(Access::NameOf(root).owner->paragraphs.InUse() + 1);
        double written = 0;
        movBuffer += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
        std::size_t level = 1;
        for (LHCParagraph const * at = &root;;) {
            progress.Step([&] { return written / count; });
            ++written;
            Open(*at, level);
            if (LHCParagraph const * const first = Access::FirstOf(*at)) {
                if (level == maximumLevels) Refuse(*first, "levels", maximumLevels);
                at = first;
                ++level;
                continue;
            }
            // What was the last one below its parent closes it.
            while (level > 1 && Access::NextOf(*at) == nullptr) {
                at = Access::ParentOf(*at);
                Close(*at, --level);
            }
            if (level == 1) break;
            at = Access::NextOf(*at);
        }
        moSink.Write(movBuffer);
    }

private:
    static constexpr std::size_t fullBuffer = 65536;

    [[noreturn]] static void Refuse(LHCParagraph const & paragraph, char const * what, std::size_t limit)
    {
        constexpr std::size_t shown = 100;
        throw Failure{"more than " + std::to_string(limit) + " " + what + " at \"" +
                      std::string(Access::NameOf(paragraph).Text().substr(0, shown)) + "\""};
    }

    void Open(LHCParagraph const & paragraph, std::size_t level)
    {
        if (movBuffer.size() >= fullBuffer) {
            moSink.Write(movBuffer);
            movBuffer.clear();
        }
        Name const & name = Access::NameOf(paragraph);
        std::string const * const value = Access::ValueOf(paragraph);
        bool const leaf = Access::FirstOf(paragraph) == nullptr;
        bool const asText = leaf && value != nullptr && !IsWhiteSpace(*value);

        movBuffer.append(2 * (level - 1), ' ');
        movBuffer += '<';
        AppendName(paragraph, name);
        std::size_t count = 0;
        for (Attribute const * a = Access::FirstAttributeOf(paragraph); a != nullptr; a = a->next) {
            if (++count > maximumAttributes) Refuse(paragraph, "attributes", maximumAttributes);
            movBuffer += ' ';
            if (a->name->Text() == valueAttribute) {
                movBuffer += "_x005F_value";
            } else {
                AppendName(paragraph, *a->name);
            }
            AppendAttributeText(paragraph, a->text);
        }
        if (value != nullptr && !asText) {
            movBuffer += ' ';
            movBuffer += valueAttribute;
            AppendAttributeText(paragraph, *value);
        }
        if (!leaf) {
            movBuffer += ">\n";
        } else if (!asText) {
            movBuffer += "/>\n";
        } else {
            movBuffer += '>';
            AppendText(movBuffer, *value, false);
            AppendEndTag(paragraph);
        }
    }

    void Close(LHCParagraph const & paragraph, std::size_t level)
    {
        movBuffer.append(2 * (level - 1), ' ');
        AppendEndTag(paragraph);
    }

    void AppendEndTag(LHCParagraph const & paragraph)
    {
        movBuffer += "</";
        AppendName(paragraph, Access::NameOf(paragraph));
        movBuffer += ">\n";
    }

    void AppendName(LHCParagraph const & of, Name const & name)
    {
        std::size_t const before = movBuffer.size();
        if (name.plain) {
            movBuffer += name.Text();
        } else {
            documents::AppendName(movBuffer, name.Text());
        }
        if (movBuffer.size() - before > maximumNameBytes) Refuse(of, "bytes in a name", maximumNameBytes);
    }

    void AppendAttributeText(LHCParagraph const & of, std::string_view text)
    {
        movBuffer += "=\"";
        std::size_t const before = movBuffer.size();
        AppendText(movBuffer, text, true);
        if (movBuffer.size() - before > maximumAttributeBytes)
            Refuse(of, "bytes in an attribute", maximumAttributeBytes);
        movBuffer += '"';
    }

    Sink & moSink;
    std::string movBuffer;
};

}  // namespace

void WriteXml(LHCParagraph const & root, Sink & sink, Progress & progress)
{
    XmlWriter(sink).Write(root, progress);
}

}  // namespace qrtcl::documents
