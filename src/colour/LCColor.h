#pragma once

#include <cstdint>

#include "foundation/Export.h"
#include "foundation/LCString.h"

/// A colour as the family passes it around: five bytes, the type T, red, green, blue and alpha.
///
/// T = 0 is a plain colour. T = 255 is a system colour of the platform: R, G and B are its 24-bit index, B
/// lowest, which is carried and never resolved. T = 31 with white is no colour, T = 32 with black the default
/// colour; any other T is carried along. A number for a field is cut to its low 8 bits: 256 stores 0, -1
/// stores 255.
class QRTCL_API LCColor {
public:
    static constexpr int StandardColorsCount = 16;
    static constexpr int ExtendedColorsCount = 4;
    static constexpr int WebColorsCount = 140;

    /// No colour, not black.
    constexpr LCColor() : LCColor(31, 255, 255, 255, 255) {}
    /// The integer form T, R, G, B, with B in the low byte, and alpha.
    constexpr LCColor(int trgb, int a) : LCColor(trgb >> 24, trgb >> 16, trgb >> 8, trgb, a) {}
    constexpr LCColor(int r, int g, int b) : LCColor(0, r, g, b, 255) {}
    constexpr LCColor(int r, int g, int b, int a) : LCColor(0, r, g, b, a) {}
    constexpr LCColor(int t, int r, int g, int b, int a)
        : mivT(LowByte(t)), mivR(LowByte(r)), mivG(LowByte(g)), mivB(LowByte(b)), mivA(LowByte(a))
    {}
    constexpr LCColor(LCColor const &) noexcept = default;
    constexpr LCColor(LCColor &&) noexcept = default;
    constexpr LCColor & operator=(LCColor const &) noexcept = default;
    constexpr LCColor & operator=(LCColor &&) noexcept = default;
    constexpr virtual ~LCColor() = default;

    constexpr int GetT() const { return mivT; }
    constexpr int GetR() const { return mivR; }
    constexpr int GetG() const { return mivG; }
    constexpr int GetB() const { return mivB; }
    constexpr int GetA() const { return mivA; }
    constexpr void SetT(int t) { mivT = LowByte(t); }
    constexpr void SetR(int r) { mivR = LowByte(r); }
    constexpr void SetG(int g) { mivG = LowByte(g); }
    constexpr void SetB(int b) { mivB = LowByte(b); }
    constexpr void SetA(int a) { mivA = LowByte(a); }

    /// Without alpha; negative from T = 128 on.
    constexpr int GetTRGB() const { return Pack(mivT, mivR, mivG, mivB); }
    /// T, B, G, R with R in the low byte. A system colour keeps its index in the low bytes: this is its TRGB
    /// form.
    constexpr int GetTBGR() const { return mivT == 255 ? GetTRGB() : Pack(mivT, mivB, mivG, mivR); }

    /// Scales red, green and blue, cut toward zero and at most 255. A negative factor leaves the low 8 bits
    /// of the negative product. A system colour stays as it is.
    void SetBrightness(double factor);

    // All five fields count. The order is by T, R, G, B, A.
    constexpr bool operator==(LCColor const &) const = default;
    constexpr bool operator<(LCColor const & other) const { return AllFields() < other.AllFields(); }

    /// "<T>0</T><R>255</R><G>0</G><B>0</B><A>255</A>", for display.
    LCString StrTRGBA() const;

private:
    static constexpr std::uint8_t LowByte(int v) { return static_cast<std::uint8_t>(v); }
    static constexpr int Pack(unsigned int a, unsigned int b, unsigned int c, unsigned int d)
    {
        return static_cast<int>(a << 24 | b << 16 | c << 8 | d);
    }
    constexpr LCUInt64 AllFields() const
    {
        return LCUInt64{static_cast<unsigned int>(GetTRGB())} << 8 | mivA;
    }

    std::uint8_t mivT;
    std::uint8_t mivR;
    std::uint8_t mivG;
    std::uint8_t mivB;
    std::uint8_t mivA;
};

/// A colour built from fields in the order R, G, B.
class QRTCL_API LCRGBColor : public LCColor {
public:
    using LCColor::LCColor;
    /// Black, unlike a default `LCColor`.
    constexpr LCRGBColor() : LCColor(0, 255) {}
};

/// A colour built from fields in the order B, G, R. Once built, nothing remembers the order.
class QRTCL_API LCBGRColor : public LCColor {
public:
    /// Black, unlike a default `LCColor`.
    constexpr LCBGRColor() : LCColor(0, 255) {}
    /// The form of `GetTBGR`: with 255 in the top byte, the order is T, R, G, B.
    constexpr LCBGRColor(int tbgr, int a)
        : LCColor((tbgr >> 24) == -1 ? LCColor(tbgr, a) : LCColor(tbgr >> 24, tbgr, tbgr >> 8, tbgr >> 16, a))
    {}
    constexpr LCBGRColor(int b, int g, int r) : LCColor(r, g, b) {}
    constexpr LCBGRColor(int b, int g, int r, int a) : LCColor(r, g, b, a) {}
    constexpr LCBGRColor(int t, int b, int g, int r, int a) : LCColor(t, r, g, b, a) {}
};
