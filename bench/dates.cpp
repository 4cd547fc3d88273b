// Dates: adding spans, comparing across zones, texts.

#include <chrono>
#include <cstdint>
#include <ctime>
#include <utility>

#include "Bench.h"
#include "time/LCDateTime.h"

#ifdef PEER_FMT
#include <fmt/chrono.h>
#endif
#ifdef PEER_POCO
#include <Poco/DateTime.h>
#include <Poco/DateTimeFormatter.h>
#include <Poco/LocalDateTime.h>
#include <Poco/Timespan.h>
#endif
#ifdef PEER_QT
#include <QDateTime>
#endif

namespace {

using namespace std::chrono;
using Instant = sys_time<milliseconds>;

constexpr std::size_t count = 10'000;

/// A reading of 1990 to 2050 with its zone, and a span of up to 100 days either way.
struct Reading {
    Instant local;
    minutes bias;
    milliseconds span;
};

std::vector<Reading> const & Readings()
{
    static std::vector<Reading> const readings = [] {
        auto random = bench::Random();
        Instant const begin = sys_days(1990y / January / 1);
        std::vector<Reading> made;
        for (std::size_t i = 0; i < count; ++i) {
            auto const at = static_cast<std::int64_t>(random() % (60LL * 365 * 86'400'000));
            auto const span = static_cast<std::int64_t>(random() % (200LL * 86'400'000)) - 100LL * 86'400'000;
            made.push_back({begin + milliseconds(at), minutes(static_cast<int>(random() % 49) * 30 - 720),
                            milliseconds(span)});
        }
        return made;
    }();
    return readings;
}

/// The eight fields, as those who keep a count must compute them.
struct Fields {
    int year, month, day, hour, minute, second, millisecond;
    explicit Fields(Instant at)
    {
        auto const day_ = floor<days>(at);
        year_month_day const date(day_);
        hh_mm_ss const time(at - day_);
        year = static_cast<int>(date.year());
        month = static_cast<int>(static_cast<unsigned>(date.month()));
        day = static_cast<int>(static_cast<unsigned>(date.day()));
        hour = static_cast<int>(time.hours().count());
        minute = static_cast<int>(time.minutes().count());
        second = static_cast<int>(time.seconds().count());
        millisecond = static_cast<int>(time.subseconds().count());
    }
};

LCDateTime Ours(Instant at, minutes bias)
{
    Fields const f(at);
    return {f.year,   f.month,  f.day,         f.hour,
            f.minute, f.second, f.millisecond, static_cast<int>(bias.count())};
}

#ifdef PEER_POCO
Poco::DateTime AsPoco(Reading const & reading)
{
    Fields const f(reading.local);
    return {f.year, f.month, f.day, f.hour, f.minute, f.second, f.millisecond};
}
#endif

/// A vector of what `make` gives for each reading.
template <typename Make> auto ForEach(Make make)
{
    std::vector<decltype(make(Readings()[0]))> made;
    for (Reading const & reading : Readings()) made.push_back(make(reading));
    return made;
}

/// Adds the span of each reading to its date; `add` gives the sum with its calendar fields, `day` reads one.
template <typename Dates, typename Spans, typename Add, typename Day>
void Adding(std::string const & implementation, Dates dates, Spans spans, Add add, Day day)
{
    for (std::size_t i = 0; i < count; ++i) {
        Fields const expected(Readings()[i].local + Readings()[i].span);
        bench::Require(day(add(dates[i], spans[i])) == expected.day, implementation.c_str());
    }
    bench::Register("W11.date-add-span", implementation, count,
                    [dates = std::move(dates), spans = std::move(spans), add] {
                        for (std::size_t i = 0; i < count; ++i) {
                            auto const sum = add(dates[i], spans[i]);
                            benchmark::DoNotOptimize(&sum);
                        }
                    });
}

void Adding()
{
    auto const plus = [](auto const & date, auto const & span) { return date + span; };
    auto const span = [](Reading const & r) { return r.span; };
    Adding(
        "ours", ForEach([](Reading const & r) { return Ours(r.local, r.bias); }),
        ForEach([](Reading const & r) { return LCTimeSpan(static_cast<double>(r.span.count()) / 1000.0); }),
        plus, [](LCDateTime const & date) { return date.GetDay(); });
    Adding(
        "std::chrono", ForEach([](Reading const & r) { return r.local; }), ForEach(span),
        [](Instant date, milliseconds by) { return Fields(date + by); },
        [](Fields const & f) { return f.day; });
#ifdef PEER_POCO
    Adding("poco", ForEach(AsPoco),
           ForEach([](Reading const & r) { return Poco::Timespan(r.span.count() * 1000); }), plus,
           [](Poco::DateTime const & date) { return date.day(); });
#endif
#ifdef PEER_QT
    Adding(
        "qt", ForEach([](Reading const & r) {
            return QDateTime::fromMSecsSinceEpoch(r.local.time_since_epoch().count(), Qt::UTC);
        }),
        ForEach(span),
        [](QDateTime const & date, milliseconds by) { return date.addMSecs(by.count()).date(); },
        [](QDate const & date) { return date.day(); });
#endif
}

/// Compares each reading with one of another zone within 100 days.
template <typename Dates> void Comparing(std::string const & implementation, Dates dates)
{
    for (std::size_t i = 0; i + 1 < count; i += 2) {
        Reading const & a = Readings()[i];
        Instant const first = a.local - a.bias, second = first + a.span;
        bench::Require((dates[i] < dates[i + 1]) == (first < second), implementation.c_str());
    }
    bench::Register("W11.date-compare-zones", implementation, count / 2, [dates = std::move(dates)] {
        for (std::size_t i = 0; i + 1 < count; i += 2) benchmark::DoNotOptimize(dates[i] < dates[i + 1]);
    });
}

/// `make` takes the local time and the bias.
auto Pairs(auto make)
{
    std::vector<decltype(make(Instant(), minutes()))> dates;
    for (std::size_t i = 0; i + 1 < count; i += 2) {
        Reading const & a = Readings()[i];
        minutes const bias = Readings()[i + 1].bias;
        dates.push_back(make(a.local, a.bias));
        dates.push_back(make(a.local - a.bias + a.span + bias, bias));
    }
    return dates;
}

void Comparing()
{
    Comparing("ours", Pairs(Ours));
#ifdef PEER_POCO
    Comparing("poco", Pairs([](Instant local, minutes bias) {
                  Fields const f(local);
                  return Poco::LocalDateTime(static_cast<int>(bias.count()) * 60, f.year, f.month, f.day,
                                             f.hour, f.minute, f.second, f.millisecond, 0);
              }));
#endif
#ifdef PEER_QT
    Comparing("qt", Pairs([](Instant local, minutes bias) {
                  return QDateTime::fromMSecsSinceEpoch((local - bias).time_since_epoch().count(),
                                                        Qt::OffsetFromUTC,
                                                        static_cast<int>(bias.count()) * 60);
              }));
#endif
}

/// `print` gives day, month, year, hour, minute and second.
template <typename Dates, typename Print>
void Printing(std::string const & workload, std::string const & implementation, Dates dates, Print print)
{
    for (std::size_t i = 0; i < count; ++i) {
        Fields const f(Readings()[i].local);
        char expected[64];
        std::snprintf(expected, sizeof expected, "%02d/%02d/%04d %02d:%02d:%02d", f.day, f.month, f.year,
                      f.hour, f.minute, f.second);
        bench::Require(print(dates[i]) == expected, implementation.c_str());
    }
    bench::Register(workload, implementation, count, [dates = std::move(dates), print] {
        for (auto const & date : dates) benchmark::DoNotOptimize(print(date));
    });
}

void Printing(std::string const & workload)
{
    auto const broken = [](Reading const & r) {
        Fields const f(r.local);
        std::tm tm{};
        tm.tm_year = f.year - 1900;
        tm.tm_mon = f.month - 1;
        tm.tm_mday = f.day;
        tm.tm_hour = f.hour;
        tm.tm_min = f.minute;
        tm.tm_sec = f.second;
        return tm;
    };
    Printing(workload, "strftime", ForEach(broken), [](std::tm const & tm) {
        char text[64];
        return std::string(text, std::strftime(text, sizeof text, "%d/%m/%Y %H:%M:%S", &tm));
    });
#ifdef PEER_FMT
    Printing(workload, "fmt", ForEach(broken),
             [](std::tm const & tm) { return fmt::format("{:%d/%m/%Y %H:%M:%S}", tm); });
#endif
#ifdef PEER_POCO
    Printing(workload, "poco", ForEach(AsPoco), [](Poco::DateTime const & date) {
        return Poco::DateTimeFormatter::format(date, "%d/%m/%Y %H:%M:%S");
    });
#endif
}

}  // namespace

int main(int argc, char * arguments[])
{
    auto const ours = [](Reading const & r) { return Ours(r.local, r.bias); };
    Adding();
    Comparing();
    Printing("W11.date-format", "ours", ForEach(ours), [](LCDateTime const & date) { return date.Str(); });
    Printing("W11.date-format");
    for (char const * const workload : {"W11.date-format", "W11.date-format-string"})
        bench::RegisterBound(workload, "the block of its 19 bytes", count, [] {
            for (std::size_t i = 0; i < count; ++i)
                benchmark::DoNotOptimize(std::string("23/11/2026 12:34:56"));
        });
    static LCString const format = "DD/MM/YYYY HH:mm:SS";
    Printing("W11.date-format-string", "ours", ForEach(ours),
             [](LCDateTime const & date) { return date.StrFormat(format); });
    Printing("W11.date-format-string");
    benchmark::Initialize(&argc, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
