#pragma once

#include "foundation/Export.h"
#include "streams/LCDBHashCode.h"

/// The state of a record whose table keeps a time stamp: a number that the database changes with each change.
class QRTCL_API LCDBTimeStampHashCode : public LCDBHashCode {
public:
    explicit LCDBTimeStampHashCode(int stamp = 0) : DBTimeStamp(stamp) {}
    LCDBTimeStampHashCode(LCDBTimeStampHashCode const &) = default;
    LCDBTimeStampHashCode & operator=(LCDBTimeStampHashCode const &) = default;
    ~LCDBTimeStampHashCode() override;

    /// False if `other` holds no time stamp; else whether the stamps are equal.
    bool IsEqual(LCDBHashCode const & other) const override;
    LCDBHashCode * Clone() const override;

    virtual int GetDBTimeStamp() const;
    virtual void SetDBTimeStamp(int stamp);

private:
    int DBTimeStamp;
};
