#include "streams/detail/StandardStream.h"

#include <limits>

namespace qrtcl::streams {

LCLong Size(std::istream & stream)
{
    std::streamoff const position = stream.tellg();
    stream.seekg(0, std::ios::end);
    std::streamoff const size = stream.tellg();
    stream.seekg(position);
    return size > std::numeric_limits<LCLong>::max() ? -1 : static_cast<LCLong>(size);
}

LCLong Read(std::istream & stream, void * buffer, LCLong count, bool rewind)
{
    if (rewind) stream.seekg(0);
    stream.read(static_cast<char *>(buffer), count);
    return count;
}

}  // namespace qrtcl::streams
