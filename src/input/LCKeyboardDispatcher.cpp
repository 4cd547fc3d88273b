#include "input/LCKeyboardDispatcher.h"

#include <utility>

namespace {

/// Fires the event with a handled flag behind the arguments, and gives the flag.
template <typename Event, typename... Args> bool IsHandled(Event & event, Args &... args)
{
    bool handled = false;
    event(args..., handled);
    return handled;
}

}  // namespace

void LCKeyboardDispatcher::LCHandler::Register() { Instance().PushHandler(*this); }
void LCKeyboardDispatcher::LCHandler::Unregister() { Instance().PopHandler(); }

bool LCKeyboardDispatcher::LCHandler::DoKeyDown(unsigned short & key, bool a, bool b, bool c)
{
    return IsHandled(OnKeyDown, key, a, b, c);
}

bool LCKeyboardDispatcher::LCHandler::DoKeyUp(unsigned short & key, bool a, bool b, bool c)
{
    return IsHandled(OnKeyUp, key, a, b, c);
}

bool LCKeyboardDispatcher::LCHandler::DoKeyPress(char & ch) { return IsHandled(OnKeyPress, ch); }

bool LCKeyboardDispatcher::DoKeyDown(unsigned short & key, bool a, bool b, bool c)
{
    if (IsHandled(OnKeyDown, key)) return true;
    LCHandler * const handler = GetCurrentHandler();
    return handler != nullptr && handler->DoKeyDown(key, a, b, c);
}

bool LCKeyboardDispatcher::DoKeyUp(unsigned short & key, bool a, bool b, bool c)
{
    if (IsHandled(OnKeyUp, key)) return true;
    LCHandler * const handler = GetCurrentHandler();
    return handler != nullptr && handler->DoKeyUp(key, a, b, c);
}

bool LCKeyboardDispatcher::DoKeyPress(char & ch)
{
    if (DoKeyHandleCode(ch) || IsHandled(OnKeyPress, ch)) return true;
    LCHandler * const handler = GetCurrentHandler();
    return handler != nullptr && handler->DoKeyPress(ch);
}

void LCKeyboardDispatcher::PopHandler()
{
    if (!movHandlers.empty()) movHandlers.pop_front();
}

bool LCKeyboardDispatcher::DoKeyHandleCode(char & ch)
{
    if (mbvCollecting && !IsInTime()) mbvCollecting = false;
    if (mbvCollecting) {
        if (ch == mcvSuffix) {
            LCString const code = std::move(movCode);  // a receiver may begin the next one
            mbvCollecting = false;
            OnCode(code);
        } else {
            movCode += LCString(1, ch);
        }
        return true;
    }
    if (!mbvHasPrefix) {
        BeginCode();
        return DoKeyPress(ch);
    }
    if (ch != mcvPrefix) return false;
    BeginCode();
    return true;
}

void LCKeyboardDispatcher::BeginCode()
{
    movCode.clear();
    mbvCollecting = true;
    movStart = LCDateTime::GetCurrentDateTime();
}

bool LCKeyboardDispatcher::IsInTime() const
{
    LCTimeSpan const limit = movReactionSpeed < 0.0 ? 0.0 : movReactionSpeed;
    return !(movStart.GetTimeSpan(LCDateTime::GetCurrentDateTime()) > limit);
}
