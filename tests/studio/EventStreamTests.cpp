#include <chrono>
#include <string>

#include <gtest/gtest.h>

#include "tools/studio/shared/EventStream.h"

namespace vx::tools::studio {

namespace {

Json entry(std::size_t bytes) {
    return {{"kind", "beacon"}, {"title", "long"}, {"body", std::string(bytes, 'x')}};
}

std::size_t bytesOf(const EventStream::Entries& entries) {
    std::size_t bytes = 0;
    for (const auto& each : entries)
        bytes += each->text.size();
    return bytes;
}

TEST(StudioEventStream, TheTimelineIsBoundedByCountAndByBytes) {
    EventStream events;
    for (std::size_t count = 0; count <= EventStream::kMostEntries; ++count)
        events.append("hit", "short");
    EXPECT_EQ(events.entriesAfter(0).size(), EventStream::kMostEntries);
    EXPECT_EQ(events.entriesAfter(0).front()->id, 2u);
    for (int count = 0; count < 200; ++count)
        events.append(entry(100'000));
    const EventStream::Entries kept = events.entriesAfter(0);
    EXPECT_LE(bytesOf(kept), EventStream::kMostBytes);
    EXPECT_GT(bytesOf(kept), EventStream::kMostBytes - EventStream::kLongestEntry);
    EXPECT_EQ(kept.back()->id, EventStream::kMostEntries + 201);
}

TEST(StudioEventStream, OfALongEntryTheBeginningStays) {
    EventStream events;
    events.append({{"kind", "log"},
                   {"title", std::string(300'000, 't')},
                   {"level", 2},
                   {"text", "again"},
                   {"body", Json::array({std::string(5'000'000, '\xc3')})}}); // no UTF-8
    const auto kept = events.entriesAfter(0).front();
    EXPECT_LT(kept->text.size(), 20'000u);
    const Json shown = Json::parse(kept->text);
    EXPECT_EQ(shown["level"], 2);
    EXPECT_EQ(shown["id"], 1);
    EXPECT_GT(shown["cut"], 5'000'000);
    EXPECT_EQ(shown["body"].get<std::string>().substr(0, 2), "[\"");
    EXPECT_FALSE(shown.contains("text"));
}

TEST(StudioEventStream, AReaderGetsMuchInSeveralReads) {
    EventStream events;
    for (int count = 0; count < 60; ++count)
        events.append(entry(100'000));
    EventStream::Position position;
    int reads = 0;
    for (std::uint64_t next = 1; next <= 60; ++reads) {
        const auto news = events.waitAfter(position, std::chrono::seconds(10));
        ASSERT_FALSE(news.entries.empty());
        EXPECT_LT(bytesOf(news.entries), 1'000'000u);
        for (const auto& each : news.entries)
            EXPECT_EQ(each->id, next++);
        position = news.position;
    }
    EXPECT_GT(reads, 5);
    EXPECT_TRUE(events.waitAfter(position, {}).entries.empty());
}

} // namespace

} // namespace vx::tools::studio
