#include "streams/OleDBException.h"

OleDBException::OleDBException(LCString const & message, LCLong code, LCString const & detail)
    : Message(message), Code(code), Detail(detail), movWhat(message)
{}

OleDBException::~OleDBException() = default;

char const * OleDBException::what() const noexcept { return movWhat.c_str(); }
