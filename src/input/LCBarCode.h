#pragma once

#include "foundation/Export.h"
#include "foundation/LCString.h"

/// A bar code as it was read or is to be printed: the name of its symbology and its data.
///
/// Both are free text. Nothing is encoded or checked, and a type need not be one of the names below.
class QRTCL_API LCBarCode {
public:
    // The names in use; each is the text behind "BCT_".
    static LCString const BCT_C2_5_interleaved;
    static LCString const BCT_C2_5_industrial;
    static LCString const BCT_C2_5_matrix;
    static LCString const BCT_C39;
    static LCString const BCT_C39Extended;
    static LCString const BCT_C128A;
    static LCString const BCT_C128B;
    static LCString const BCT_C128C;
    static LCString const BCT_C93;
    static LCString const BCT_C93Extended;
    static LCString const BCT_MSI;
    static LCString const BCT_PostNet;
    static LCString const BCT_Codabar;
    static LCString const BCT_EAN8;
    static LCString const BCT_EAN13;
    static LCString const BCT_UPC_A;
    static LCString const BCT_UPC_E0;
    static LCString const BCT_UPC_E1;
    static LCString const BCT_UPC_Supp2;
    static LCString const BCT_UPC_Supp5;
    static LCString const BCT_EAN128A;
    static LCString const BCT_EAN128B;
    static LCString const BCT_EAN128C;
    static LCString const BCT_QR;

    LCBarCode(LCString const & type = LCString(), LCString const & data = LCString())
        : movType(type), movData(data)
    {}
    LCBarCode(LCBarCode const &) = default;
    LCBarCode(LCBarCode &&) noexcept = default;
    LCBarCode & operator=(LCBarCode const &) = default;
    LCBarCode & operator=(LCBarCode &&) noexcept = default;
    virtual ~LCBarCode();

    virtual LCString GetType() const;
    virtual LCString GetData() const;
    /// Always true, as is `SetData`.
    virtual bool SetType(LCString const & type);
    virtual bool SetData(LCString const & data);

    // Byte for byte, by type and then by data.
    virtual bool operator==(LCBarCode const & other) const;
    virtual bool operator!=(LCBarCode const & other) const;
    virtual bool operator<(LCBarCode const & other) const;

private:
    LCString movType;
    LCString movData;
};
