#include "input/LCKeyboardDispatcher.h"

#include <string>

#include "platform/Clock.h"
#include "support/Support.h"

namespace {

using KeyEvent = LCEvent5Param<unsigned short &, bool, bool, bool, bool &>;
using CharEvent = LCEvent2Param<char &, bool &>;
using CodeEvent = LCEvent1Param<LCString const &>;

/// The system's clock stands still, and the application's moves by its offset.
struct Keyboard : testing::Test {
    Keyboard()
    {
        using namespace qrtcl::platform;
        ReplaceClock([]() noexcept { return LocalTime{2024, 12, 31, 23, 59, 58, 990, 60}; });
        Reset();
        dispatcher.SetHasPrefix(true);
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
        log.clear();
        for (char key : keys) {
            double const seconds = key == '>' ? 1.0 : key == '.' ? 0.02 : 0.0;
            LCDateTime::SetCurrentDateTimeOffset(LCDateTime::GetCurrentDateTimeOffset() + seconds);
            if (seconds == 0.0) log += dispatcher.DoKeyPress(key) ? '+' : '-';
        }
        return log;
    }
    void OnCode(LCString const & text) { log += "(" + text.str() + ")"; }
    void OnTyped(char & key, bool &) { log += {'[', key, ']'}; }

    LCKeyboardDispatcher & dispatcher = LCKeyboardDispatcher::Instance();
    CodeEvent::LCHandler code{this, &Keyboard::OnCode};
    CharEvent::LCHandler typed{this, &Keyboard::OnTyped};
    std::string log;
};

TEST_F(Keyboard, CodesAreToldFromTyping)
{
    struct { bool hasPrefix; double speed; std::string keys, expected; } const rows[] = {
        {false, 3, "AB\r", "++(AB)+"}, {false, 3, "\r", "()+"}, {false, 3, "A>>>\r", "+(A)+"},
        {false, 3, "A>>>>\r", "+()+"}, {false, 3, "A>>>>>BC\r", "+++(BC)+"},
        {false, 3, "A>>B>>\rC\r", "++()++(C)+"},  // the limit is that of the whole code, not of a gap
        {false, 3, {"A\0B\r", 4}, {"+++(A\0B)+", 9}},
        {false, 0.5, "A.\r", "+()+"},  // from 58.990 to 59.010: only the seconds count
        {false, -1, "A\r.B>\r", "+(A)++()+"}, {true, 3, "=12\r", "+++(12)+"}, {true, 3, "X\r", "[X]-[\r]-"},
        {true, 3, "=\r", "+()+"}, {true, 3, "=>=1\r", "+++(=1)+"}, {true, 3, "=1>>>>>1\r", "++[1]-[\r]-"},
        {true, 3, "=1>>>>>=2\r", "++++(2)+"}, {true, 3, "=A\rB=C\r", "++(A)+[B]-++(C)+"},
    };
    for (auto const & row : rows) {
        Reset();
        EXPECT_EQ(std::pair(dispatcher.GetHasPrefix(), dispatcher.GetReactionSpeed() == 3.0), std::pair(false, true));
        dispatcher.SetHasPrefix(row.hasPrefix);
        dispatcher.SetReactionSpeed(row.speed);
        EXPECT_EQ(Press(row.keys), row.expected) << testing::PrintToString(row.keys);
    }
}

TEST_F(Keyboard, ASettingTakesEffectAtTheNextCharacterAlsoDuringACode)
{
    EXPECT_EQ(Press("=1"), "++");
    dispatcher.SetPrefix('A');
    dispatcher.SetSuffix('2');
    EXPECT_EQ(Press("A\r2=A1>"), "++(1A\r)+[=]-++");
    dispatcher.SetReactionSpeed(0.0);
    EXPECT_EQ(Press("2A1"), "[2]-++");
    dispatcher.SetHasPrefix(false);
    EXPECT_EQ(Press("2B"), "(1)++");
    dispatcher.SetHasPrefix(true);
    EXPECT_EQ(Press("2B"), "(B)+[B]-");
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
    KeyEvent::LCHook down{handler.OnKeyDown, this, &Window::OnKey}, up{handler.OnKeyUp, this, &Window::OnKeyUp};
    CharEvent::LCHook press{handler.OnKeyPress, this, &Window::OnChar};
};

TEST_F(Keyboard, KeysGoToTheHandlerOnTopOfTheStack)
{
    Window a{log, 'a'}, b{log, 'b'};
    EXPECT_EQ(Press("0"), "[0]-");
    a.handler.Register();
    b.handler.Register();
    EXPECT_EQ(Press("1"), "[1]b1+");
    b.used = false;
    EXPECT_EQ(Press("2"), "[2]b2-");
    a.handler.Unregister();  // takes b off, which is on top
    dispatcher.PushHandler(a.handler);
    dispatcher.PopHandler();
    EXPECT_EQ(Press("3"), "[3]a3+");
    dispatcher.PopHandler();
    dispatcher.PopHandler();  // on the empty stack
    EXPECT_EQ(Press("4"), "[4]-");
}

TEST_F(Keyboard, KeysGoByReferenceToReceiversAndThenToTheHandler)
{
    struct Filter {
        void OnKey(unsigned short & key, bool & handled) { handled = ++key == 8; }
        void OnChar(char & ch, bool & handled) { handled = ++ch == 'y'; }
    } filter;
    Window window{log, 'w'};
    window.handler.Register();
    CharEvent::LCHook const press(dispatcher.OnKeyPress, filter, &Filter::OnChar);
    EXPECT_EQ(Press("xz"), "[x]+[z]w{+");
    LCEvent2Param<unsigned short &, bool &>::LCHook const down(dispatcher.OnKeyDown, filter, &Filter::OnKey),
        up(dispatcher.OnKeyUp, filter, &Filter::OnKey);
    for (auto const send : {&LCKeyboardDispatcher::DoKeyDown, &LCKeyboardDispatcher::DoKeyUp}) {
        for (bool const used : {false, true}) {
            log.clear();
            window.used = used;
            unsigned short seven = 7, eight = 8;
            EXPECT_TRUE((dispatcher.*send)(seven, used, false, true));
            EXPECT_EQ((dispatcher.*send)(eight, used, !used, true), used);
            bool const isUp = send == &LCKeyboardDispatcher::DoKeyUp;
            EXPECT_EQ(log, std::string(isUp ? "^w9" : "w9") + (used ? "a-c" : "-bc"));
            EXPECT_EQ(eight, 10);
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
    Window window{log, 'w'};
    Opener opener{window};
    CodeEvent::LCHook const hook(dispatcher.OnCode, opener, &Opener::OnCode);
    EXPECT_EQ(Press("=A\r!"), "++(A)[?]w?(Z)+[!]w!+");
}

TEST_F(Keyboard, ACopyHasTheSettingsTheReceiversAndTheOpenCode)
{
    Press("=A");
    static LCKeyboardDispatcher const & copy = *new LCKeyboardDispatcher(dispatcher);
    EXPECT_EQ(Press("\rB"), "(A)+[B]-");
    dispatcher = copy;
    EXPECT_EQ(Press("B\rC"), "+(AB)+[C]-");
}

template <typename T> concept SaysIfThereIsAPrefix = requires(LCKeyboardDispatcher & d, T t) { d.SetHasPrefix(t); };
static_assert(SaysIfThereIsAPrefix<bool> && !SaysIfThereIsAPrefix<char const *> && !SaysIfThereIsAPrefix<char>);

}  // namespace
