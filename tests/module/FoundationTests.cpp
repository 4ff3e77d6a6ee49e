#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "vxprivacy/platform/foundation/CodePoints.h"
#include "vxprivacy/platform/foundation/JSONValue.h"
#include "vxprivacy/platform/foundation/NotificationCenter.h"
#include "vxprivacy/platform/foundation/OrderedDictionary.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace {

using namespace vx;

constexpr auto kMost = std::numeric_limits<std::int32_t>::max();
constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();

TEST(Text, LeadingIntegerOfAnyText) {
    const std::vector<std::pair<std::string, std::int32_t>> cases = {
        {"", 0},     {"12", 12}, {" \t-7x", -7},         {"+5", 5},
        {"x1", 0},   {"--5", 0}, {"2147483648", kMost},  {"-99999999999", kLeast},
        {"0x10", 0}, {"3.9", 3}, {"-2147483648", kLeast}};
    for (const auto& [text, number] : cases)
        EXPECT_EQ(integerValue(text), number) << text;
}

TEST(Text, UnsignedIntegerDetectsItsBase) {
    const std::vector<std::pair<std::string, std::uint64_t>> cases = {
        {"", 0},      {"1700000000000", 1700000000000},
        {"0x1F", 31}, {"017", 15},
        {"no", 0},    {"99999999999999999999", std::numeric_limits<std::uint64_t>::max()}};
    for (const auto& [text, number] : cases)
        EXPECT_EQ(unsignedInteger(text), number) << text;
}

TEST(Text, DecimalIntegerIsTheWholeText) {
    for (const char* text : {"", "12 ", " 12", "1e3", "0x1", "-", ".", "1.2.3", "12a"})
        EXPECT_FALSE(decimalInteger(text)) << text;
    EXPECT_EQ(decimalInteger("1700000000000"), 1700000000000);
    EXPECT_EQ(decimalInteger("-3.9"), -3);
}

TEST(Text, FormattingFillsPlaceholdersInTurn) {
    EXPECT_EQ(formatted("%@=%d;%@", {"%@", -3, std::optional<std::string>()}), "%@=-3;(null)");
    EXPECT_EQ(formatted("100% of %@", {"%d"}), "100% of %d");
    EXPECT_EQ(formatted("%@ %@", {"one"}), "one %@");
    EXPECT_EQ(formatted("%2$@(%1$@)%3$@%0$@%@%1$", {"a", "b"}), "b(a)%3$@%0$@a%1$");
    EXPECT_EQ(numberedKey("P_", kLeast), "P_-2147483648");
}

TEST(Text, SplittingKeepsEmptyPieces) {
    using Pieces = std::vector<std::string_view>;
    EXPECT_EQ(split("", ';'), Pieces{""});
    EXPECT_EQ(split("a;;b;", ';'), (Pieces{"a", "", "b", ""}));
    EXPECT_EQ(removingAll("P_1P_2", "P_"), "12");
}

TEST(CodePoints, FindsTextWhateverItsCase) {
    const struct {
        std::string text, part;
        std::optional<CodePointRange> range;
    } table[] = {
        {"All Our Partners, our partners", "oUR pARTNERS", {{4, 12}}},
        {"Всё о НАШИ ПАРТНЁРЫ", "наши партнёры", {{6, 13}}},
        {"ΌΛΟΙ ΟΙ ΣΥΝΕΡΓΆΤΕΣ μας", "οι συνεργάτες", {{5, 13}}},
        {"ÉTÉ: ČŽŐŞ Ÿ", "čžőş ÿ", {{5, 6}}},
        {"\U0001F600 ĄÄ", "ąä", {{2, 2}}},
        {"\xff\xc3 \xf0\x9f ok", "OK", {{6, 2}}},
        {"partners", "our partners", {}},
        {"partners", "", {}},
    };
    for (const auto& [text, part, range] : table)
        EXPECT_EQ(rangeIgnoringCase(text, part), range) << text;
    EXPECT_EQ(byteOffset("né à", 2), 3U);
    EXPECT_EQ(byteOffset("\U0001F600!", 1), 4U);
    EXPECT_EQ(byteOffset("né", 9), 3U);
}

TEST(OrderedDictionary, KeepsThePlaceOfAKeyThatIsSetAgain) {
    ConsentDictionary dictionary{{"b", "1"}, {"a", "2"}};
    dictionary.set("b", "3");
    ConsentDictionary copy = dictionary;
    copy.set("b", "4");
    dictionary = copy; // look-up in a copy must not reach into the original
    copy = {};
    std::string text;
    for (const auto& [key, value] : dictionary)
        text += key + *dictionary.find(key);
    EXPECT_EQ(text, "b4a2");
}

TEST(OrderedDictionary, MayBeEmptyAndFilledAgain) {
    ConsentDictionary dictionary;
    EXPECT_TRUE(dictionary.empty() && dictionary.begin() == dictionary.end());
    EXPECT_FALSE(dictionary.contains(""));
    dictionary.set("a", "1");
    const ConsentDictionary taken = std::exchange(dictionary, {});
    EXPECT_EQ(dictionary, ConsentDictionary());
    EXPECT_NE(dictionary, taken);
    dictionary.set("a", "1");
    EXPECT_EQ(dictionary, taken);
}

TEST(JSONValue, RefusesWhatIsNoDocument) {
    for (const std::string& text :
         {std::string(), std::string("{"), std::string("{\"a\":1"), std::string("[1] x"),
          std::string("3"), std::string("\"text\""), std::string("null"), std::string("{'a':1}"),
          std::string("[\"\xff\"]"), std::string(8 << 20, '['), std::string("[1]\0", 4)}) {
        std::string error;
        EXPECT_FALSE(JSONValue::parse(text, &error)) << text.substr(0, 20);
        EXPECT_FALSE(error.empty());
    }
}

TEST(JSONValue, AValueOfAnotherTypeIsAbsent) {
    const JSONValue document = JSONValue::parse(
        R"({"text":"12","number":12,"half":2.5,"huge":18446744073709551615,"yes":true,
            "none":null,"list":[1,"a"],"object":{"key":"value"}})");
    for (const auto& [key, value] : document.members()) {
        SCOPED_TRACE(key);
        EXPECT_EQ(value.string().has_value(), key == "text");
        EXPECT_EQ(value.boolean().has_value(), key == "yes");
        EXPECT_EQ(value.integer().has_value(), key == "number");
        EXPECT_EQ(value.elements().size(), key == "list" ? 2U : 0U);
        EXPECT_EQ(value.members().size(), key == "object" ? 1U : 0U);
        EXPECT_EQ(bool(value["key"]), key == "object");
    }
    EXPECT_EQ(document["text"].integerValue(), 12);
    EXPECT_EQ(document["half"].integerValue(), 2);
    EXPECT_EQ(document["huge"].integerValue(), kMost);
    EXPECT_EQ(document["list"].integerValue(), 0);
    EXPECT_FALSE(document["missing"]["deeper"]);
}

TEST(JSONValue, OutlivesTheTextAndTheRootItCameFrom) {
    JSONValue value;
    {
        std::string text = R"({"a":{"b":"kept"}})";
        value = JSONValue::parse(text)["a"]["b"];
        text.assign(text.size(), 'x');
    }
    EXPECT_EQ(value.string(), "kept");
}

TEST(JSONValue, EqualityIsOfTypeAndContent) {
    const auto elements =
        JSONValue::parse(
            R"([3,"3",9007199254740993,9007199254740992,3.5,true,null,[3],["3"],{"a":3},{"a":"3"}])")
            .elements();
    for (std::size_t left = 0; left < elements.size(); ++left)
        for (std::size_t right = 0; right < elements.size(); ++right)
            EXPECT_EQ(elements[left] == elements[right], left == right) << left << ' ' << right;
    const JSONValue again = JSONValue::parse(R"([{"a":3.0}])");
    EXPECT_EQ(again.elements()[0], elements[9]);
    EXPECT_EQ(again.elements()[0].hash(), elements[9].hash());
}

// Does something the first time it hears a notification.
struct Hearer : NotificationObserver {
    explicit Hearer(std::function<void()> doFirst = [] {}) : first(std::move(doFirst)) {}
    void onNotificationReceived(const Notification&) override {
        if (++heard == 1)
            first();
    }
    std::function<void()> first;
    int heard = 0;
};

TEST(NotificationCenter, TellsEachObserverOnceAndNobodyWhoIsGone) {
    NotificationCenter center;
    Hearer last;
    auto removed = std::make_unique<Hearer>();
    auto destroyed = std::make_unique<Hearer>();
    Hearer late;
    Hearer leaving;
    Hearer first([&] {
        center.removeObserver(*removed);
        destroyed.reset(); // without being removed
        center.addObserver("news", late);
        center.removeObserver(leaving);
        center.removeObserver(first);
    });
    for (NotificationObserver* observer :
         {static_cast<NotificationObserver*>(&first), static_cast<NotificationObserver*>(&first),
          static_cast<NotificationObserver*>(removed.get()),
          static_cast<NotificationObserver*>(destroyed.get()),
          static_cast<NotificationObserver*>(&leaving), static_cast<NotificationObserver*>(&last)})
        center.addObserver("news", *observer);
    center.post({"other", nullptr, {}});
    center.post({"news", nullptr, {}});
    EXPECT_EQ(first.heard, 1);
    EXPECT_EQ(removed->heard, 0);
    EXPECT_EQ(leaving.heard, 0);
    EXPECT_EQ(late.heard, 0);
    EXPECT_EQ(last.heard, 1);
    center.post({"news", nullptr, {}});
    EXPECT_EQ(first.heard, 1);
    EXPECT_EQ(late.heard, 1);
    EXPECT_EQ(last.heard, 2);
}

} // namespace
