#pragma once

#include "foundation/Export.h"
#include "foundation/LCString.h"
#include "foundation/LCTypes.h"

// Include the headers of the types that you read or write.
class LCBarCode;
class LCColor;
class LCDateTime;
class LCDoubleVector;
class LCGUID;
class LCIntVector;
class LCParagraphList;
class LCStringList;
class LCStringVector;
class LCTimeSpan;

// The kinds of node that a concrete tree may hold.
inline constexpr int civPT_Node = 0;
inline constexpr int civPT_Text = 1;
inline constexpr int civPT_Comment = 2;
inline constexpr int civPT_Attribute = 3;

/// One node of a tree of named parameters, through which the objects of the family are read and written.
///
/// A paragraph has a name, one value text, attributes (name and text) and an ordered list of children. A
/// child addressed by its name is a parameter. This class turns every type into text and back in the one form
/// that the family stores; the tree itself is the concrete class, which supplies the abstract operations.
/// Names are handed to it unchanged.
///
/// A default answers only what is not stored: a number is read as 0 from text that is none, and any text but
/// "0" is a true bool. The default of a number goes through its stored text, so 1e-15 comes back as 0, unless
/// the whole parameter is missing. Setters give what the text setter underneath gives; those of spans, dates,
/// colours, bar codes and of everything with several parts are always true.
class QRTCL_API LCParagraph {
public:
    /// Binds to the caller's switch, which is read at every write of a parameter: true overwrites an existing
    /// parameter, false appends a new child each time. One switch serves as many paragraphs as are given it.
    explicit LCParagraph(bool & findExisting) : mbFindExisting(findExisting) {}
    /// Bound to the same switch.
    LCParagraph(LCParagraph const &) = default;
    LCParagraph & operator=(LCParagraph const &) = delete;
    virtual ~LCParagraph() = 0;

    virtual LCString GetName() = 0;
    virtual bool SetName(LCString const & name) = 0;

    // Writing this paragraph. Lists and vectors append their items behind those that are there. `digits`
    // decimals are written, or with a negative number up to 12 without trailing zeros. The integer forms of a
    // colour leave its alpha out.

    /// The meaning of `flag` is the concrete class's; the library passes true.
    virtual bool SetValueAsString(LCString const & text, bool flag) = 0;
    virtual bool SetValueAsStringList(LCStringList const & list);
    virtual bool SetValueAsStringVector(LCStringVector const & list);
    virtual bool SetValueAsIntVector(LCIntVector const & list);
    virtual bool SetValueAsDoubleVector(LCDoubleVector const & list);
    /// One child for each line; a line feed at the very end is lost.
    virtual bool SetValueAsMultiLineString(LCString const & text);
    virtual bool SetValueAsGUID(LCGUID const & value);
    virtual bool SetValueAsDateTime(LCDateTime const & value);
    virtual bool SetValueAsTimeSpan(LCTimeSpan const & value);
    virtual bool SetValueAsBarCode(LCBarCode const & value);
    virtual bool SetValueAsColor(LCColor const & value);
    virtual bool SetValueAsTBGRColorValue(LCColor const & value);
    virtual bool SetValueAsTRGBColorValue(LCColor const & value);
    virtual bool SetValueAsInteger(int value);
    virtual bool SetValueAsLong(LCLong value);
    virtual bool SetValueAsDouble(double value, int digits);
    virtual bool SetValueAsBool(bool value);

    // Reading this paragraph. Lists and vectors are emptied first.

    virtual LCString GetValueAsString(LCString const & def) = 0;
    /// Plain text is one element, also when it is empty.
    virtual void GetValueAsStringList(LCStringList & list);
    virtual void GetValueAsStringVector(LCStringVector & list);
    virtual void GetValueAsIntVector(LCIntVector & list);
    virtual void GetValueAsDoubleVector(LCDoubleVector & list);
    /// The lines joined by line feeds, or plain text as it is; `def` plays no part.
    virtual LCString GetValueAsMultiLineString(LCString const & def);
    virtual LCGUID GetValueAsGUID(LCGUID const & def);
    /// A missing field is that of `def`, but a missing zone is this machine's.
    virtual LCDateTime GetValueAsDateTime(LCDateTime const & def);
    virtual LCTimeSpan GetValueAsTimeSpan(LCTimeSpan const & def);
    /// `def` plays no part: what is missing is empty.
    virtual LCBarCode GetValueAsBarCode(LCBarCode const & def);
    /// Reads the TBGR form if there are no fields. `def` plays no part in the three colour readers.
    virtual LCColor GetValueAsColor(LCColor const & def);
    virtual LCColor GetValueAsTRGBColorValue(LCColor const & def);
    virtual LCColor GetValueAsTBGRColorValue(LCColor const & def);
    virtual int GetValueAsInteger(int def);
    virtual LCLong GetValueAsLong(LCLong def);
    virtual double GetValueAsDouble(double def);
    virtual bool GetValueAsBool(bool def);

    // Writing an attribute.

    virtual bool SetAttributeAsString(LCString const & name, LCString const & text) = 0;
    virtual bool SetAttributeAsGUID(LCString const & name, LCGUID const & value);
    virtual bool SetAttributeAsInteger(LCString const & name, int value);
    virtual bool SetAttributeAsLong(LCString const & name, LCLong value);
    virtual bool SetAttributeAsDouble(LCString const & name, double value, int digits);
    virtual bool SetAttributeAsBool(LCString const & name, bool value);
    virtual bool RemoveAttribute(LCString const & name) = 0;

    // Reading an attribute.

    virtual LCString GetAttributeAsString(LCString const & name, LCString const & def) = 0;
    virtual LCGUID GetAttributeAsGUID(LCString const & name, LCGUID const & def);
    virtual int GetAttributeAsInteger(LCString const & name, int def);
    virtual LCLong GetAttributeAsLong(LCString const & name, LCLong def);
    virtual double GetAttributeAsDouble(LCString const & name, double def);
    virtual bool GetAttributeAsBool(LCString const & name, bool def);
    virtual void GetAttributeNames(LCStringVector & names) = 0;

    // Writing a parameter: the value of the child `name`, which the switch says whether to find or to append.

    virtual bool SetParameterAsStringList(LCString const & name, LCStringList const & list);
    virtual bool SetParameterAsStringVector(LCString const & name, LCStringVector const & list);
    virtual bool SetParameterAsIntVector(LCString const & name, LCIntVector const & list);
    virtual bool SetParameterAsDoubleVector(LCString const & name, LCDoubleVector const & list);
    virtual bool SetParameterAsMultiLineString(LCString const & name, LCString const & text);
    /// Whatever the flag, read back with `GetParameterAsString` and the flag false.
    virtual bool SetParameterAsString(LCString const & name, LCString const & text, bool flag);
    virtual bool SetParameterAsGUID(LCString const & name, LCGUID const & value);
    virtual bool SetParameterAsDateTime(LCString const & name, LCDateTime const & value);
    virtual bool SetParameterAsTimeSpan(LCString const & name, LCTimeSpan const & value);
    virtual bool SetParameterAsBarCode(LCString const & name, LCBarCode const & value);
    virtual bool SetParameterAsColor(LCString const & name, LCColor const & value);
    virtual bool SetParameterAsTRGBColorValue(LCString const & name, LCColor const & value);
    virtual bool SetParameterAsTBGRColorValue(LCString const & name, LCColor const & value);
    virtual bool SetParameterAsInteger(LCString const & name, int value);
    virtual bool SetParameterAsLong(LCString const & name, LCLong value);
    virtual bool SetParameterAsDouble(LCString const & name, double value, int digits);
    /// Null writes nothing, leaves an existing parameter as it is and gives true.
    virtual bool SetParameterAsNullableDouble(LCString const & name, double * value, int digits);
    virtual bool SetParameterAsBool(LCString const & name, bool value);

    // Reading a parameter: the value of the child `name`; without one, `def` itself or an empty container.

    virtual LCString GetParameterAsMultiLineString(LCString const & name, LCString const & def);
    virtual void GetParameterAsStringList(LCString const & name, LCStringList & list);
    virtual void GetParameterAsStringVector(LCString const & name, LCStringVector & list);
    virtual void GetParameterAsIntVector(LCString const & name, LCIntVector & list);
    virtual void GetParameterAsDoubleVector(LCString const & name, LCDoubleVector & list);
    /// With `flag`, an attribute of this paragraph instead of a child.
    virtual LCString GetParameterAsString(LCString const & name, LCString const & def, bool flag);
    virtual LCGUID GetParameterAsGUID(LCString const & name, LCGUID const & def);
    virtual LCDateTime GetParameterAsDateTime(LCString const & name, LCDateTime const & def);
    virtual LCTimeSpan GetParameterAsTimeSpan(LCString const & name, LCTimeSpan const & def);
    virtual LCBarCode GetParameterAsBarCode(LCString const & name, LCBarCode const & def);
    virtual LCColor GetParameterAsColor(LCString const & name, LCColor const & def);
    virtual LCColor GetParameterAsTRGBColorValue(LCString const & name, LCColor const & def);
    virtual LCColor GetParameterAsTBGRColorValue(LCString const & name, LCColor const & def);
    virtual int GetParameterAsInteger(LCString const & name, int def);
    virtual LCLong GetParameterAsLong(LCString const & name, LCLong def);
    virtual double GetParameterAsDouble(LCString const & name, double def);
    /// A new double that the caller deletes; null if the child is missing, has no value or holds no number.
    virtual double * GetParameterAsNullableDouble(LCString const & name);
    virtual bool GetParameterAsBool(LCString const & name, bool def);

    // Reading the attribute `attr` of the child `name`; without the child, `def` itself.

    virtual LCString GetParameterAttributeAsString(LCString const & name, LCString const & attr,
                                                   LCString const & def);
    virtual LCGUID GetParameterAttributeAsGUID(LCString const & name, LCString const & attr,
                                               LCGUID const & def);
    virtual int GetParameterAttributeAsInteger(LCString const & name, LCString const & attr, int def);
    virtual LCLong GetParameterAttributeAsLong(LCString const & name, LCString const & attr, LCLong def);
    virtual double GetParameterAttributeAsDouble(LCString const & name, LCString const & attr, double def);
    virtual bool GetParameterAttributeAsBool(LCString const & name, LCString const & attr, bool def);

    // Children. They belong to their parent, and null means that there is none.

    /// A new child behind all others, also if the name exists; never null.
    virtual LCParagraph * CreateParagraph(LCString const & name) = 0;
    /// A new child in front of the child `next`.
    virtual LCParagraph * CreateParagraphBefore(LCParagraph & next, LCString const & name) = 0;
    virtual LCParagraph * GetParagraph(LCString const & name) = 0;
    virtual void GetParagraphs(LCParagraphList & list) = 0;
    /// The meaning of `flag` is the concrete class's; the library passes true.
    virtual void GetParagraphsWithName(LCString const & name, LCParagraphList & list, bool flag) = 0;

    // The child `name` whose attribute `attr` has the text that the attribute setter stores for `value`. A
    // double is found only if it was written with negative `digits`, or reads the same.

    virtual LCParagraph * GetParagraphWithNameAndAttributeAsString(LCString const & name,
                                                                   LCString const & attr,
                                                                   LCString const & text) = 0;
    virtual LCParagraph * GetParagraphWithNameAndAttributeAsGUID(LCString const & name, LCString const & attr,
                                                                 LCGUID const & value);
    virtual LCParagraph * GetParagraphWithNameAndAttributeAsInteger(LCString const & name,
                                                                    LCString const & attr, int value);
    virtual LCParagraph * GetParagraphWithNameAndAttributeAsDouble(LCString const & name,
                                                                   LCString const & attr, double value);
    virtual LCParagraph * GetParagraphWithNameAndAttributeAsLong(LCString const & name, LCString const & attr,
                                                                 LCLong value);
    virtual LCParagraph * GetParagraphWithNameAndAttributeAsBool(LCString const & name, LCString const & attr,
                                                                 bool value);

    /// Destroys `child` with all below it; false if it is no child of this paragraph.
    virtual bool RemoveParagraph(LCParagraph & child) = 0;
    /// How many were destroyed.
    virtual int RemoveParagraphsWithName(LCString const & name) = 0;
    virtual void RemoveAllParagraphs() = 0;
    /// Copies children, value and attributes. In `dest`, the children come behind those that are there,
    /// attributes of other names stay, and the value is always overwritten.
    virtual void CopyToParagraph(LCParagraph & dest);
    /// Null for the root.
    virtual LCParagraph * GetParent() = 0;
    /// One of the constants `civPT_`.
    virtual int GetKind() = 0;

    // A pointer, a text in quotes above all, is no bool. A class that overrides one of these operations keeps
    // that by a `using` declaration of its name.

    template <typename T> bool SetValueAsString(LCString const &, T *) = delete;
    template <typename T> bool SetValueAsBool(T *) = delete;
    template <typename T> bool GetValueAsBool(T *) = delete;
    template <typename T> bool SetAttributeAsBool(LCString const &, T *) = delete;
    template <typename T> bool GetAttributeAsBool(LCString const &, T *) = delete;
    template <typename T> bool SetParameterAsString(LCString const &, LCString const &, T *) = delete;
    template <typename T> bool SetParameterAsBool(LCString const &, T *) = delete;
    template <typename T> LCString GetParameterAsString(LCString const &, LCString const &, T *) = delete;
    template <typename T> bool GetParameterAsBool(LCString const &, T *) = delete;
    template <typename T> bool GetParameterAttributeAsBool(LCString const &, LCString const &, T *) = delete;
    template <typename T> void GetParagraphsWithName(LCString const &, LCParagraphList &, T *) = delete;
    template <typename T>
    LCParagraph * GetParagraphWithNameAndAttributeAsBool(LCString const &, LCString const &, T *) = delete;

protected:
    /// The child that a parameter is written to: the existing one if the switch is on, else a new one.
    LCParagraph * CheckCreateParagraphForSetParam(LCString const & name);
    /// `text` without the line feeds, carriage returns and blanks at its end. A tab stays.
    static LCString CleanEnd(LCString const & text);

    bool & mbFindExisting;
};
