#pragma once

#include <concepts>
#include <list>
#include <type_traits>

#include "concurrency/LCEvent.h"
#include "foundation/Export.h"
#include "foundation/LCString.h"
#include "time/LCDateTime.h"
#include "time/LCTimeSpan.h"

/// The one place through which an application passes its keyboard input. A true result means that the key is
/// used up.
///
/// It tells the codes of a bar code scanner, which types like a keyboard, from typing: the characters between
/// a prefix and a suffix are a code, if it ends in time by the application's clock. All other keys go to the
/// receivers here and, if none of them has set the handled flag, to the handler on top of a stack. A receiver
/// may change the key for those behind it and for the caller.
///
/// Without a prefix, which is how it starts, every character belongs to a code, and none reaches a receiver
/// as a key.
class QRTCL_API LCKeyboardDispatcher {
public:
    /// A receiver that takes its turn on the stack. Nothing takes it off when it dies: it must be popped
    /// before.
    class QRTCL_API LCHandler {
    public:
        LCHandler() = default;
        LCHandler(LCHandler const &) = default;
        LCHandler & operator=(LCHandler const &) = default;
        virtual ~LCHandler() = default;

        void Register();
        /// Takes the top off the stack, whichever handler that is.
        void Unregister();

        // These fire the event and return the handled flag, which starts false. The three flags are passed on
        // unread.
        bool DoKeyDown(unsigned short & key, bool a, bool b, bool c);
        bool DoKeyUp(unsigned short & key, bool a, bool b, bool c);
        bool DoKeyPress(char & ch);

        LCEvent5Param<unsigned short &, bool, bool, bool, bool &> OnKeyDown;
        LCEvent2Param<char &, bool &> OnKeyPress;
        LCEvent5Param<unsigned short &, bool, bool, bool, bool &> OnKeyUp;
    };

    static LCKeyboardDispatcher & Instance() { return movInstance; }
    LCKeyboardDispatcher(LCKeyboardDispatcher const &) = default;
    LCKeyboardDispatcher & operator=(LCKeyboardDispatcher const &) = default;

    /// Codes are not looked for here: the keys of a scanner reach receivers like any others. The three flags
    /// travel with the key to the handler's event, unread.
    virtual bool DoKeyDown(unsigned short & key, bool a, bool b, bool c);
    virtual bool DoKeyPress(char & ch);
    /// As `DoKeyDown`.
    virtual bool DoKeyUp(unsigned short & key, bool a, bool b, bool c);

    /// The handler becomes the one that gets the keys. It may be pushed twice.
    void PushHandler(LCHandler & handler) { movHandlers.push_front(&handler); }
    /// Back to the handler below. Does nothing on an empty stack.
    void PopHandler();

    // A setting takes effect at the next character, also during a code.

    void SetHasPrefix(bool hasPrefix) { mbvHasPrefix = hasPrefix; }
    /// The prefix itself goes to `SetPrefix`.
    template <typename T>
    requires std::is_pointer_v<T> || std::same_as<T, char>
    void SetHasPrefix(T) = delete;
    bool GetHasPrefix() const { return mbvHasPrefix; }
    void SetPrefix(char prefix) { mcvPrefix = prefix; }
    char GetPrefix() const { return mcvPrefix; }
    void SetSuffix(char suffix) { mcvSuffix = suffix; }
    char GetSuffix() const { return mcvSuffix; }
    /// The time from the first character of a code to its suffix, compared with whole seconds of the clock; a
    /// negative one counts as 0. It is tested when a character arrives: what was collected in vain is then
    /// dropped.
    void SetReactionSpeed(LCTimeSpan const & speed) { movReactionSpeed = speed; }
    LCTimeSpan GetReactionSpeed() const { return movReactionSpeed; }

    LCEvent2Param<unsigned short &, bool &> OnKeyDown;
    LCEvent2Param<char &, bool &> OnKeyPress;
    LCEvent2Param<unsigned short &, bool &> OnKeyUp;
    /// A whole code without prefix and suffix, fired inside the call that brings the suffix. The dispatcher
    /// is ready for the next code by then.
    LCEvent1Param<LCString const &> OnCode;

private:
    LCKeyboardDispatcher() = default;
    virtual ~LCKeyboardDispatcher() = default;

    /// The step of `DoKeyPress` that recognises codes: true if the character belongs to one.
    bool DoKeyHandleCode(char & ch);
    void BeginCode();
    bool IsInTime() const;
    LCHandler * GetCurrentHandler() const { return movHandlers.empty() ? nullptr : movHandlers.front(); }

    static LCKeyboardDispatcher movInstance;

    /// The top at the front; not owned.
    std::list<LCHandler *> movHandlers;
    bool mbvHasPrefix = false;
    char mcvPrefix = '=';
    char mcvSuffix = '\r';
    bool mbvCollecting = false;
    LCString movCode;
    LCDateTime movStart;
    LCTimeSpan movReactionSpeed = 3.0;
};
