#include "platform/CharacterSet.h"

#include <cerrno>
#include <iconv.h>
#include <langinfo.h>

namespace qrtcl::platform {

namespace {

class Converter {
public:
    explicit Converter(std::string const & from) : mopDescriptor(::iconv_open("UTF-16LE", from.c_str())) {}
    Converter(Converter const &) = delete;
    Converter & operator=(Converter const &) = delete;
    ~Converter()
    {
        if (IsOpen()) ::iconv_close(mopDescriptor);
    }
    bool IsOpen() const { return mopDescriptor != reinterpret_cast<::iconv_t>(-1); }

    /// Converts from the front of `text` as far as it goes, and takes that off. False at a byte that can't be
    /// converted. A letter is held back while an accent may follow; where the run ends it is given out.
    bool Append(std::string & units, std::string_view & text)
    {
        char buffer[4096];
        char * from = const_cast<char *>(text.data());  // the interface takes no const, but only reads
        char * to = buffer;
        std::size_t left = text.size();
        std::size_t room = sizeof buffer;
        bool const done = ::iconv(mopDescriptor, &from, &left, &to, &room) != static_cast<std::size_t>(-1) ||
                          errno == E2BIG;
        units.append(buffer, to);
        text.remove_prefix(text.size() - left);
        if (!done || text.empty()) {
            to = buffer;
            room = sizeof buffer;
            ::iconv(mopDescriptor, nullptr, nullptr, &to, &room);
            units.append(buffer, to);
        }
        return done;
    }

private:
    ::iconv_t mopDescriptor;
};

}  // namespace

std::string ThreadCharacterSet() { return ::nl_langinfo(CODESET); }

std::string ToUtf16(std::string_view text, std::string const & characterSet)
{
    std::string units;
    units.reserve(2 * text.size());
    Converter converter(characterSet);
    while (!text.empty()) {
        if (converter.IsOpen() && converter.Append(units, text)) continue;
        units += {text.front(), '\0'};
        text.remove_prefix(1);
    }
    return units;
}

}  // namespace qrtcl::platform
