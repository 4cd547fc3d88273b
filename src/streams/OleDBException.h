#pragma once

#include <exception>

#include "foundation/Export.h"
#include "foundation/LCString.h"
#include "foundation/LCTypes.h"

/// A database error. `what` gives the message of the construction, also after the field has been changed.
/// Moving copies.
class QRTCL_API OleDBException : public std::exception {
public:
    OleDBException(LCString const & message, LCLong code, LCString const & detail);
    OleDBException(OleDBException const &) = default;
    OleDBException & operator=(OleDBException const &) = default;
    ~OleDBException() override;

    char const * what() const noexcept override;

    LCString Message;
    LCLong Code;
    LCString Detail;

private:
    LCString movWhat;
};
