#include "input/LCKeyboardDispatcher.h"

#include <random>
#include <string>

#include "platform/Clock.h"
#include "support/Support.h"

namespace {

using KeyEvent = LCEvent5Param<unsigned short &, bool, bool, bool, bool &>;
using CharEvent = LCEvent2Param<char &, bool &>;

/// The system's clock stands still, and the application's moves by its offset.
class Keyboard : public testing::Test {
protected:
    Keyboard()
    {
        qrtcl::platform::ReplaceClock(
            []() noexcept { return qrtcl::platform::LocalTime{2024, 12, 31, 23, 59, 58, 990, 60}; });
        Reset();
    }
    ~Keyboard() override
    {
        Reset();
        qrtcl::platform::ReplaceClock(nullptr);
    }
    void Reset()
    {
        static LCKeyboardDispatcher const & untouched = *new LCKeyboardDispatcher(dispatcher);
        dispatcher = untouched;
        dispatcher.OnCode << code;
        dispatcher.OnKeyPress << typed;
        LCDateTime::SetCurrentDateTimeOffset(0.0);
    }

    /// Presses the keys, where ">" lets a second pass and "." 20 ms, and gives what came out: codes in
    /// parentheses, typed characters in brackets, and behind them "+" for a character used up and "-" for one
    /// that is not.
    std::string Press(std::string const & keys)
    {
        movLog.clear();
        for (char key : keys) {
            if (key == '>' || key == '.') {
                LCDateTime::SetCurrentDateTimeOffset(LCDateTime::GetCurrentDateTimeOffset() +
                                                     (key == '>' ? 1 : 0.02));
            } else {
                movLog += dispatcher.DoKeyPress(key) ? '+' : '-';
            }
        }
        return movLog;
    }
    void OnCode(LCString const & text) { movLog += "(" + text.str() + ")"; }
    void OnTyped(char & key, bool &) { movLog += {'[', key, ']'}; }

    LCKeyboardDispatcher & dispatcher = LCKeyboardDispatcher::Instance();
    LCEvent1Param<LCString const &>::LCHandler code{this, &Keyboard::OnCode};
    CharEvent::LCHandler typed{this, &Keyboard::OnTyped};
    std::string movLog;
};

TEST_F(Keyboard, CodesAreToldFromTyping)
{
    struct { bool hasPrefix; double speed; std::string keys, expected; } const rows[] = {
        {false, 3, "AB\r", "++(AB)+"}, {false, 3, "\r", "()+"}, {false, 3, "A>>>\r", "+(A)+"},
        {false, 3, "A>>>>\r", "+()+"}, {false, 3, "A>>>>>BC\r", "+++(BC)+"},
        {false, 3, "A>>B>>\rC\r", "++()++(C)+"},  // the limit is that of the whole code, not of a gap
        {false, 3, {"A\0B\r", 4}, {"+++(A\0B)+", 9}},
        {false, 0.5, "A.\r", "+()+"},  // from 58.990 to 59.010: only the seconds count
        {false, -1, "A\r.B>\r", "+(A)++()+"},
        {true, 3, "=12\r", "+++(12)+"},
        {true, 3, "X\r", "[X]-[\r]-"},
        {true, 3, "=\r", "+()+"},
        {true, 3, "=>=1\r", "+++(=1)+"},
        {true, 3, "=1>>>>>1\r", "++[1]-[\r]-"},
        {true, 3, "=1>>>>>=2\r", "++++(2)+"},
        {true, 3, "=A\rB=C\r", "++(A)+[B]-++(C)+"},
    };
    EXPECT_FALSE(dispatcher.GetHasPrefix());
    EXPECT_EQ(dispatcher.GetReactionSpeed(), 3.0);
    for (auto const & row : rows) {
        Reset();
        dispatcher.SetHasPrefix(row.hasPrefix);
        dispatcher.SetReactionSpeed(row.speed);
        EXPECT_EQ(Press(row.keys), row.expected) << testing::PrintToString(row.keys);
    }
}

/// The rules of a code; what it gives is what `Press` gives.
struct Model {
    bool hasPrefix = false, open = false;
    char prefix = '=', suffix = '\r';
    int now = 0, start = 0, speed = 3;
    std::string text;

    std::string Press(char key)
    {
        if (key == '>') return ++now, "";
        if (open && now - start > std::max(speed, 0)) open = false;
        if (!open) {
            if (hasPrefix && key != prefix) return {'[', key, ']', '-'};
            open = true;
            start = now;
            text.clear();
            if (hasPrefix) return "+";
        }
        open = key != suffix;
        if (!open) return "(" + text + ")+";
        text += key;
        return "+";
    }
};

TEST_F(Keyboard, SettingsMayChangeAtAnyCharacter)
{
    std::mt19937 random(10);
    auto const pick = [&](std::string const & from) { return from[random() % from.size()]; };
    Model model;
    for (int step = 0; step < 20000; ++step) {
        switch (random() % 16) {
        case 0: dispatcher.SetHasPrefix(model.hasPrefix = random() % 2 == 0); break;
        case 1: dispatcher.SetPrefix(model.prefix = pick("=A\r")); break;
        case 2: dispatcher.SetSuffix(model.suffix = pick("\r=B")); break;
        case 3: dispatcher.SetReactionSpeed(model.speed = static_cast<int>(random() % 5) - 1); break;
        }
        char const key = pick("=AB\r>>");
        ASSERT_EQ(Press({key}), model.Press(key)) << "step " << step << ", " << key;
    }
}

/// A part of the application that notes the keys it gets, and uses them up if told so.
struct Window {
    void OnKey(unsigned short & key, bool a, bool b, bool c, bool & handled)
    {
        log += name + std::to_string(key++) + (a ? 'a' : '-') + (b ? 'b' : '-') + (c ? 'c' : '-');
        handled = used;
    }
    void OnKeyUp(unsigned short & key, bool a, bool b, bool c, bool & handled)
    {
        log += '^';
        OnKey(key, a, b, c, handled);
    }
    void OnChar(char & ch, bool & handled)
    {
        log += {name, ch};
        handled = used;
    }
    std::string & log;
    char name;
    bool used = true;
    LCKeyboardDispatcher::LCHandler handler{};
    KeyEvent::LCHook down{handler.OnKeyDown, this, &Window::OnKey},
        up{handler.OnKeyUp, this, &Window::OnKeyUp};
    CharEvent::LCHook press{handler.OnKeyPress, this, &Window::OnChar};
};

TEST_F(Keyboard, KeysGoToTheHandlerOnTopOfTheStack)
{
    dispatcher.SetHasPrefix(true);
    std::string log;
    Window a{log, 'a'}, b{log, 'b'};
    EXPECT_EQ(Press("0"), "[0]-");
    a.handler.Register();
    b.handler.Register();
    EXPECT_EQ(Press("1"), "[1]+");
    b.used = false;
    EXPECT_EQ(Press("2"), "[2]-");
    a.handler.Unregister();  // takes b off, which is on top
    dispatcher.PushHandler(a.handler);
    dispatcher.PopHandler();
    EXPECT_EQ(Press("3"), "[3]+");
    dispatcher.PopHandler();
    dispatcher.PopHandler();  // on the empty stack
    EXPECT_EQ(Press("4"), "[4]-");
    EXPECT_EQ(log, "b1b2a3");
}

TEST_F(Keyboard, KeysGoByReferenceToReceiversAndThenToTheHandler)
{
    struct Filter {
        void OnKey(unsigned short & key, bool & handled) { handled = ++key == 8; }
        void OnChar(char & ch, bool & handled) { handled = ++ch == 'y'; }
    } filter;
    std::string log;
    Window window{log, 'w'};
    window.handler.Register();
    dispatcher.SetHasPrefix(true);
    CharEvent::LCHook const press(dispatcher.OnKeyPress, filter, &Filter::OnChar);
    EXPECT_EQ(Press("xz"), "[x]+[z]+");
    EXPECT_EQ(log, "w{");
    for (auto const send : {&LCKeyboardDispatcher::DoKeyDown, &LCKeyboardDispatcher::DoKeyUp}) {
        bool const isDown = send == &LCKeyboardDispatcher::DoKeyDown;
        LCEvent2Param<unsigned short &, bool &>::LCHook const hook(
            isDown ? dispatcher.OnKeyDown : dispatcher.OnKeyUp, filter, &Filter::OnKey);
        for (bool const used : {false, true}) {
            log.clear();
            window.used = used;
            unsigned short seven = 7, eight = 8;
            EXPECT_TRUE((dispatcher.*send)(seven, used, false, true));
            EXPECT_EQ((dispatcher.*send)(eight, used, !used, true), used);
            EXPECT_EQ(eight, 10);
            EXPECT_EQ(log, std::string(isDown ? "" : "^") + (used ? "w9a-c" : "w9-bc"));
        }
    }
}

// A scanned order number opens a window that takes the keys from then on.
TEST_F(Keyboard, AReceiverOfACodeFindsTheDispatcherIdleAndMayChangeTheStack)
{
    struct Opener {
        void OnCode(LCString const & text)
        {
            if (text == "Z") return;
            window.handler.Register();
            for (char ch : {'?', '=', 'Z', '\r'}) LCKeyboardDispatcher::Instance().DoKeyPress(ch);
        }
        Window & window;
    };
    std::string log;
    Window window{log, 'w'};
    Opener opener{window};
    LCEvent1Param<LCString const &>::LCHook const hook(dispatcher.OnCode, opener, &Opener::OnCode);
    dispatcher.SetHasPrefix(true);
    EXPECT_EQ(Press("=A\r!"), "++(A)[?](Z)+[!]+");
    EXPECT_EQ(log, "w?w!");
}

TEST_F(Keyboard, ACopyHasTheSettingsTheReceiversAndTheOpenCode)
{
    dispatcher.SetHasPrefix(true);
    Press("=A");
    static LCKeyboardDispatcher const & copy = *new LCKeyboardDispatcher(dispatcher);
    EXPECT_EQ(Press("\rB"), "(A)+[B]-");
    dispatcher = copy;
    EXPECT_EQ(Press("B\rC"), "+(AB)+[C]-");
}

template <typename Argument>
concept SaysWhetherThereIsAPrefix = requires(Argument argument)
{
    LCKeyboardDispatcher::Instance().SetHasPrefix(argument);
};
static_assert(SaysWhetherThereIsAPrefix<bool> && !SaysWhetherThereIsAPrefix<char const *>);

}  // namespace
