#include "input/LCKeyboardDispatcher.h"

#include <functional>
#include <utility>

#include "platform/Clock.h"

namespace {

using KeyEvent = LCEvent5Param<unsigned short &, bool, bool, bool, bool &>;
using CharEvent = LCEvent2Param<char &, bool &>;

/// The system's clock stands still, and the application's moves by its offset.
struct Keyboard : testing::Test {
    Keyboard()
    {
        using namespace qrtcl::platform;
        ReplaceClock([]() noexcept { return LocalTime{2024, 12, 31, 23, 59, 58, 990, 60}; });
        LCDateTime::SetCurrentDateTimeOffset(0.0);
        dispatcher.SetHasPrefix(true);
    }
    ~Keyboard() override { qrtcl::platform::ReplaceClock(nullptr); }
    /// The one dispatcher, as it was at first.
    static LCKeyboardDispatcher & Fresh()
    {
        static LCKeyboardDispatcher const & untouched = *new LCKeyboardDispatcher(LCKeyboardDispatcher::Instance());
        return LCKeyboardDispatcher::Instance() = untouched;
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
    void OnCode(LCString const & text)
    {
        log += "(" + text.str() + ")";
        if (atNextCode) std::exchange(atNextCode, nullptr)();
    }
    void OnTyped(char & key, bool &) { log += {'[', key, ']'}; }

    LCKeyboardDispatcher & dispatcher = Fresh();
    LCEvent1Param<LCString const &>::LCHook code{dispatcher.OnCode, this, &Keyboard::OnCode};
    CharEvent::LCHook typed{dispatcher.OnKeyPress, this, &Keyboard::OnTyped};
    std::string log;
    std::function<void()> atNextCode;
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
        {true, 3, "=1>>>>>=2\r", "++++(2)+"}, {true, 3, "=A\rB=C\r", "++(A)+[B]-++(C)+"}};
    for (auto const & row : rows) {
        LCDateTime::SetCurrentDateTimeOffset(0.0);
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
}

/// A part of the application that notes the keys it gets, and uses them up if told so.
struct Window {
    void OnKey(unsigned short & key, bool a, bool b, bool c, bool & handled)
    {
        log += name + std::to_string(key++) + (a ? 'a' : '-') + (b ? 'b' : '-') + (c ? 'c' : '-');
        handled = used;
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
    KeyEvent::LCHook down{handler.OnKeyDown, this, &Window::OnKey};
    CharEvent::LCHook press{handler.OnKeyPress, this, &Window::OnChar};
};

TEST_F(Keyboard, KeysGoByReferenceToReceiversAndThenToTheHandlerOnTop)
{
    Window a{log, 'a'}, b{log, 'b', false};
    EXPECT_EQ(Press("0"), "[0]-");
    a.handler.Register();
    b.handler.Register();
    EXPECT_EQ(Press("1"), "[1]b1-");
    a.handler.Unregister();  // takes b off, which is on top
    struct Filter {
        void OnKey(unsigned short & key, bool & handled) { handled = ++key == 8; }
        void OnChar(char & ch, bool & handled) { handled = ++ch == 'y'; }
    } filter;
    CharEvent::LCHook const press(dispatcher.OnKeyPress, filter, &Filter::OnChar);
    EXPECT_EQ(Press("xz"), "[x]+[z]a{+");
    log.clear();
    LCEvent2Param<unsigned short &, bool &>::LCHook const down(dispatcher.OnKeyDown, filter, &Filter::OnKey),
        up(dispatcher.OnKeyUp, filter, &Filter::OnKey);
    KeyEvent::LCHook const handlersUp(a.handler.OnKeyUp, b, &Window::OnKey);
    unsigned short seven = 7, eight = 8;
    EXPECT_TRUE(dispatcher.DoKeyDown(seven, true, true, true) && dispatcher.DoKeyDown(eight, true, false, true));
    seven = 7;
    EXPECT_TRUE(dispatcher.DoKeyUp(seven, true, true, true) && !dispatcher.DoKeyUp(eight, false, true, false));
    EXPECT_EQ(log + std::to_string(eight), "a9a-cb11-b-12");
    dispatcher.PopHandler();
    dispatcher.PopHandler();  // on the empty stack
    EXPECT_EQ(Press("3"), "[3]-");
}

// A scanned order number opens a window that takes the keys from then on.
TEST_F(Keyboard, AReceiverOfACodeFindsTheDispatcherIdleAndMayChangeTheStack)
{
    Window window{log, 'w'};
    atNextCode = [&] {
        window.handler.Register();
        for (char ch : {'?', '=', 'Z', '\r'}) dispatcher.DoKeyPress(ch);
    };
    EXPECT_EQ(Press("=A\r!"), "++(A)[?]w?(Z)+[!]w!+");
}

template <typename T> concept SaysIfThereIsAPrefix = requires(LCKeyboardDispatcher & d, T t) { d.SetHasPrefix(t); };
static_assert(SaysIfThereIsAPrefix<bool> && !SaysIfThereIsAPrefix<char const *> && !SaysIfThereIsAPrefix<char>);

}  // namespace
