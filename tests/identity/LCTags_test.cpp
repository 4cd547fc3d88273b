#include "identity/LCTags.h"

#include "collections/LCPairLists.h"
#include "support/Allocations.h"

namespace {

template <typename... Arguments> concept Adds = requires(LCTags & tags, Arguments... args) { tags.AddTag(args...); };
using Text = char const *;
static_assert(Adds<Text, bool> && !Adds<Text, Text> && !Adds<Text, LCString> && !Adds<Text, Text, Text>);
static_assert(std::has_virtual_destructor_v<LCTags> && std::is_nothrow_move_constructible_v<LCTags>);

LCTags Tags(LCStringPairSet const & pairs)
{
    LCTags made;
    made.AddTypeValues(pairs, false);
    return made;
}
LCTags Tags(std::initializer_list<LCStringPair> pairs) { return Tags(Make<LCStringPairSet>(pairs)); }
LCTags Coloured() { return Tags({{"Color", "Red"}, {"Color", "Blue"}, {"", "plain"}}); }
LCString All(LCTags tags) { return tags.Str("=", ";"); }

TEST(Tags, AreAddedUnlessTheyAreThereInAnyCase)
{
    struct { Text type, value; bool replace; Text all; } const rows[] = {
        {"Color", "RED", true, "plain;Color=Blue;Color=Red"}, {"color", "green", true, "plain;Color=green"},
        {"COLOR", "green", false, "plain;Color=Blue;Color=Red;Color=green"},
        {"", "PLAIN", true, "plain;Color=Blue;Color=Red"}, {"", "other", true, "other;Color=Blue;Color=Red"}};
    for (auto const & row : rows) {
        LCTags tags = Coloured();
        tags.AddTag(row.type, row.value, row.replace);
        EXPECT_EQ(All(tags), row.all);
    }
    EXPECT_EQ(Coloured().StrList(" is ").Str('\n') + All(LCTags()), "plain\nColor is Blue\nColor is Red");
}

TEST(Tags, AreFoundWithoutCase)
{
    struct { Text type, value; std::pair<bool, bool> hasAndContains; } const rows[] = {
        {"COLOR", "rED", {true, true}}, {"color", "re", {false, true}}, {"Col", "Red", {false, false}},
        {"", "Plain", {true, true}}, {"", "Red", {false, false}}, {"Color", "", {false, true}},
        {"e", "", {true, false}}};
    LCTags tags = Coloured();
    tags.AddTag("e", "", false);
    for (auto const & [type, value, expected] : rows)
        EXPECT_EQ(std::pair(tags.HasTag(type, value), tags.ContainsTag(type, value)), expected) << type << value;
    EXPECT_TRUE(tags.HasAllTags(Make<LCStringPairSet>({{"color", "red"}, {"", "plain"}})) && LCTags().HasAllTags({}));
    EXPECT_FALSE(tags.HasAllTags(Make<LCStringPairSet>({{"color", "red"}, {"", "red"}})));
}

// With the flag, each of several values under one type replaces the one before it.
TEST(Tags, AreAddedFromOthersAndRemovedWithTheTypeBehindItsLastValue)
{
    LCTags tags = Tags({{"color", "white"}}), clone;
    tags.AddTags(Coloured(), false);
    EXPECT_FALSE(tags.RemoveTag("Color", "gree") || tags.RemoveTag("Shape", "Red") || tags.RemoveTag("Shape"));
    EXPECT_TRUE(tags.RemoveTag("COLOR", "BLUE"));
    EXPECT_EQ(All(tags), "plain;color=Red;color=white");
    tags.AddTags(Tags({{"Color", "a"}, {"Color", "b"}}), true);
    tags.AddTypeValues(Make<LCStringPairSet>({{"Color", "B"}, {"s", "x"}, {"s", "y"}}), true);
    tags.AddTags(tags, true);
    clone.CloneFrom(tags);
    EXPECT_TRUE(tags.RemoveTag("Color", "B") && !tags.RemoveTag("color") && tags.RemoveTag("") && tags.HasTags());
    tags.Clear();
    EXPECT_TRUE(!tags.HasTags() && clone.HasTags());
    EXPECT_EQ(All(clone), "plain;color=b;s=y");
}

TEST(Tags, AreAddedToWhatATargetHolds)
{
    LCTags const tags = Coloured();
    auto types = Make<LCStringSet>({"0"}), values = types;
    auto all = Make<LCStringPairSet>({{"0", "0"}}), ofType = all;
    std::map<LCString, LCStringSet> map{{"Color", types}};
    tags.GetTypes(types);
    tags.GetValuesOfType("COLOR", values);
    tags.GetTypeValues(map);
    tags.GetTypeValues(all);
    tags.GetTypeValuesOfType("color", ofType);
    EXPECT_EQ(types.Str(',') + "|" + values.Str(',') + "|" + map[""].Str(',') + "|" + map["Color"].Str(','),
              ",0,Color|0,Blue,Red|plain|0,Blue,Red");
    EXPECT_EQ(All(Tags(all)) + "|" + All(Tags(ofType)), "plain;0=0;Color=Blue;Color=Red|0=0;Color=Blue;Color=Red");
    EXPECT_EQ(tags.GetFirstValueOfType("color") + tags.GetFirstValueOfType("none"), "Blue");
}

struct ComparedTags : LCTags { bool operator==(ComparedTags const & b) const { return All(*this) == All(b); } };

TEST(Tags, AreFoundWithoutAllocationAndAddedWholeOrNotAtAll)
{
    LCString const text(20, 'a'), upper = text.UpperCase(), other(20, 'b');
    ComparedTags tags;
    tags.AddTag(text, text, false);
    EXPECT_EQ(AllocationsOf([&] { tags.HasTag(upper, upper) && tags.ContainsTag(upper, upper); }), 0u);
    ExpectAllOrNothing(tags, [&](LCTags & added) { added.AddTag(other, other, true); });
    ExpectAllOrNothing(tags, [&](LCTags & added) { added.AddTag(upper, other, true); });
}

struct TrimmedTags : LCTags {
    using Arg = LCString const &;
    using LCTags::AddTag;
    void AddTag(Arg type, Arg value, bool r) override { LCTags::AddTag(type.CopyTrim(), value.CopyTrim(), r); }
    bool HasTag(Arg type, Arg value) override { return LCTags::HasTag(type.CopyTrim(), value.CopyTrim()); }
};

TEST(Tags, OfADerivedClassAreAddedAndFoundByItsRules)
{
    TrimmedTags tags;
    tags.AddTag(" u ", false);
    tags.AddTags(Tags({{" a ", " b"}}), false);
    tags.AddTypeValues(Make<LCStringPairSet>({{"c ", " d"}}), false);
    EXPECT_EQ(All(tags), "u;a=b;c=d");
    EXPECT_TRUE(tags.HasAllTags(Make<LCStringPairSet>({{" A", "B "}})));
}

}  // namespace
