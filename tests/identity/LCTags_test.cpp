#include "identity/LCTags.h"

#include "collections/LCPairLists.h"
#include "support/Support.h"

namespace {

template <typename... Arguments>
concept Adds = requires(LCTags & tags, Arguments... arguments)
{
    tags.AddTag(arguments...);
};
using Text = char const *;
static_assert(Adds<Text, Text, bool> && Adds<Text, bool> && Adds<LCString, bool>);
static_assert(!Adds<Text, Text> && !Adds<Text, LCString> && !Adds<Text, Text, Text> && !Adds<Text, int>);
static_assert(std::has_virtual_destructor_v<LCTags> && std::is_nothrow_move_constructible_v<LCTags>);

LCTags Make(std::initializer_list<std::pair<Text, Text>> tags)
{
    LCTags made;
    for (auto const & [type, value] : tags) made.AddTag(type, value, false);
    return made;
}
LCStringPairSet Pairs(std::initializer_list<LCStringPair> tags)
{
    LCStringPairSet pairs;
    pairs.insert(tags);
    return pairs;
}
LCString All(LCTags tags) { return tags.Str("=", ";"); }

LCTags Coloured() { return Make({{"Color", "Red"}, {"Color", "Blue"}, {"", "plain"}}); }

TEST(Tags, AreAddedUnlessTheyAreThereInAnyCase)
{
    struct {
        Text type, value;
        bool replace;
        Text all;
    } const rows[] = {{"Color", "RED", true, "plain;Color=Blue;Color=Red"},
                      {"COLOR", "green", false, "plain;Color=Blue;Color=Red;Color=green"},
                      {"color", "green", true, "plain;Color=green"},
                      {"Shape", "x", true, "plain;Color=Blue;Color=Red;Shape=x"},
                      {"", "PLAIN", true, "plain;Color=Blue;Color=Red"},
                      {"", "other", true, "other;Color=Blue;Color=Red"}};
    for (auto const & row : rows) {
        LCTags tags = Coloured();
        tags.AddTag(row.type, row.value, row.replace);
        EXPECT_EQ(All(tags), row.all);
    }
    LCTags untyped;
    untyped.AddTag("a", true);
    EXPECT_EQ(All(untyped), "a");
}

TEST(Tags, AreFoundWithoutCase)
{
    struct {
        Text type, value;
        bool has, contains;
    } const rows[] = {{"COLOR", "rED", true, true}, {"color", "re", false, true},
                      {"Col", "Red", false, false}, {"", "Plain", true, true},
                      {"", "Red", false, false},    {"Color", "", false, true}};
    LCTags tags = Coloured();
    for (auto const & row : rows) {
        EXPECT_EQ(tags.HasTag(row.type, row.value), row.has) << row.type << "=" << row.value;
        EXPECT_EQ(tags.ContainsTag(row.type, row.value), row.contains) << row.type << "=" << row.value;
    }
    EXPECT_FALSE(Make({{"t", ""}}).ContainsTag("t", ""));
    EXPECT_TRUE(tags.HasAllTags(Pairs({{"color", "red"}, {"", "plain"}})) && LCTags().HasAllTags({}));
    EXPECT_FALSE(tags.HasAllTags(Pairs({{"color", "red"}, {"", "red"}})));
}

// With the flag, each of several values under one type replaces the one before it.
TEST(Tags, AreAddedFromOthers)
{
    LCTags tags = Make({{"color", "white"}});
    tags.AddTags(Coloured(), false);
    EXPECT_EQ(All(tags), "plain;color=Blue;color=Red;color=white");
    tags.AddTags(Make({{"Color", "a"}, {"Color", "b"}}), true);
    EXPECT_EQ(All(tags), "plain;color=b");
    tags.AddTypeValues(Pairs({{"Color", "B"}, {"s", "x"}, {"s", "y"}}), true);
    EXPECT_EQ(All(tags), "plain;color=b;s=y");
    tags.AddTags(tags, true);
    LCTags clone;
    clone.CloneFrom(tags);
    tags.Clear();
    EXPECT_TRUE(!tags.HasTags() && clone.HasTags());
    EXPECT_EQ(All(clone), "plain;color=b;s=y");
}

TEST(Tags, AreRemovedAndATypeGoesWithItsLastValue)
{
    LCTags tags = Coloured();
    EXPECT_FALSE(tags.RemoveTag("Color", "gree") || tags.RemoveTag("Shape", "Red") ||
                 tags.RemoveTag("Shape"));
    EXPECT_TRUE(tags.RemoveTag("COLOR", "BLUE"));
    EXPECT_EQ(All(tags), "plain;Color=Red");
    EXPECT_TRUE(tags.RemoveTag("color", "red"));
    EXPECT_FALSE(tags.RemoveTag("color"));
    EXPECT_TRUE(tags.RemoveTag(""));
    EXPECT_FALSE(tags.HasTags());
}

TEST(Tags, AreAddedToWhatATargetHolds)
{
    LCTags const tags = Coloured();
    LCStringSet types, values;
    types.insert("0");
    values.insert("0");
    tags.GetTypes(types);
    tags.GetValuesOfType("COLOR", values);
    EXPECT_EQ(types.Str(',') + "|" + values.Str(','), ",0,Color|0,Blue,Red");
    EXPECT_EQ(tags.GetFirstValueOfType("color") + tags.GetFirstValueOfType("none"), "Blue");

    LCStringPairSet all = Pairs({{"0", "0"}}), ofType = all;
    tags.GetTypeValues(all);
    tags.GetTypeValuesOfType("color", ofType);
    EXPECT_EQ(all, Pairs({{"0", "0"}, {"", "plain"}, {"Color", "Blue"}, {"Color", "Red"}}));
    EXPECT_EQ(ofType, Pairs({{"0", "0"}, {"Color", "Blue"}, {"Color", "Red"}}));
    std::map<LCString, LCStringSet> map;
    map["Color"].insert("0");
    tags.GetTypeValues(map);
    EXPECT_EQ(map[""].Str(',') + "|" + map["Color"].Str(','), "plain|0,Blue,Red");
}

TEST(Tags, AreWrittenInOrder)
{
    EXPECT_EQ(All(LCTags()), "");
    EXPECT_EQ(All(Make({{"", "only"}})), "only");
    EXPECT_EQ(Coloured().StrList(" is ").Str('\n'), "plain\nColor is Blue\nColor is Red");
}

TEST(Tags, OfADerivedClassAreAddedAndFoundByItsRules)
{
    class TrimmedTags : public LCTags {
    public:
        using LCTags::AddTag;
        void AddTag(LCString const & type, LCString const & value, bool replace) override
        {
            LCTags::AddTag(type.CopyTrim(), value.CopyTrim(), replace);
        }
        bool HasTag(LCString const & type, LCString const & value) override
        {
            return LCTags::HasTag(type.CopyTrim(), value.CopyTrim());
        }
    } tags;
    tags.AddTag(" u ", false);
    tags.AddTags(Make({{" a ", " b"}}), false);
    tags.AddTypeValues(Pairs({{"c ", " d"}}), false);
    EXPECT_EQ(All(tags), "u;a=b;c=d");
    EXPECT_TRUE(tags.HasAllTags(Pairs({{" A", "B "}})));
}

}  // namespace
