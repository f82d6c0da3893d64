// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "tests/protocol/protocol_texts.h"
#include "tests/support/assert_log.h"

#include <QTest>
#include <vector>

using namespace VCTP3;

class TestValueSet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keeps_the_order_of_insertion_without_duplicates();
    void keeps_40_of_41_channels();
    void takes_an_array();
    void stays_empty_for_an_array_above_the_capacity();
    void takes_one_channel();
    void removes_and_clears();
    void tells_valid_indices();
    void gives_a_default_for_a_bad_index();
    void is_valid_when_all_values_are();
    void compares_in_order();
    void has_the_stated_capacities();

    void vector_keeps_duplicates();
    void vector_ignores_what_is_beyond_its_capacity();
    void vector_tells_valid_indices();
    void vector_compares_in_order();
};

static std::vector<Channel> values(ChannelSet const &set)
{
    return {set.begin(), set.end()};
}

void TestValueSet::keeps_the_order_of_insertion_without_duplicates()
{
    ChannelSet set;
    QVERIFY(set.empty());
    set.add_to_set(Channel::C);
    set.add_to_set(Channel::A);
    set.add_to_set(Channel::C);
    QCOMPARE(values(set), (std::vector<Channel>{Channel::C, Channel::A}));
    QVERIFY(set.contains(Channel::A) && !set.contains(Channel::B));
}

void TestValueSet::keeps_40_of_41_channels()
{
    AssertLog asserts;
    ChannelSet set;
    for (int i = 0; i < 41; ++i)
        set.add_to_set(static_cast<Channel>(i));
    QCOMPARE(set.size(), 40U);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("count < capacity")});
    set.add_to_set(Channel::A);
    QCOMPARE(set.size(), 40U);
    QVERIFY(asserts.take().isEmpty());
    QVERIFY(set.valid());
}

void TestValueSet::takes_an_array()
{
    Channel const channels[] = {Channel::B, Channel::AN, Channel::B};
    QCOMPARE(values(ChannelSet(channels, 3)), (std::vector<Channel>{Channel::B, Channel::AN}));
    QVERIFY(ChannelSet(channels, 0).empty());
}

void TestValueSet::stays_empty_for_an_array_above_the_capacity()
{
    AssertLog asserts;
    TrackType const tracks[5] = {};
    QVERIFY(TrackSet(tracks, 5).empty());
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("number <= capacity")});
}

void TestValueSet::takes_one_channel()
{
    QCOMPARE(values(ChannelSet(Channel::D)), std::vector<Channel>{Channel::D});
}

void TestValueSet::removes_and_clears()
{
    Channel const channels[] = {Channel::A, Channel::B, Channel::C};
    ChannelSet set(channels, 3);
    set.remove_from_set(Channel::B);
    set.remove_from_set(Channel::Z);
    QCOMPARE(values(set), (std::vector<Channel>{Channel::A, Channel::C}));
    set.clear_all();
    QVERIFY(set.empty());
    QVERIFY(set == ChannelSet());
}

void TestValueSet::tells_valid_indices()
{
    ReportType const types[] = {ReportType::melt, ReportType::export_};
    ReportSet const set(types, 2);
    QVERIFY(set.valid_index(0) && set.valid_index(1) && set.valid_index(1U));
    QVERIFY(!set.valid_index(-1) && !set.valid_index(2) && !set.valid_index(2U));
    QVERIFY(!set.valid_index(~0U));
    QCOMPARE(set[1], ReportType::export_);
}

void TestValueSet::gives_a_default_for_a_bad_index()
{
    AssertLog asserts;
    QCOMPARE(ReportSet()[0], ReportType::clip_change);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("valid_index(index)")});
}

void TestValueSet::is_valid_when_all_values_are()
{
    TrackSet set;
    QVERIFY(set.valid());
    set.add_to_set(TrackType::timecode);
    QVERIFY(set.valid());
    set.add_to_set(static_cast<TrackType>(4));
    QVERIFY(!set.valid());
    set.remove_from_set(static_cast<TrackType>(4));
    set.add_to_set(static_cast<TrackType>(-1));
    QVERIFY(!set.valid());
}

void TestValueSet::compares_in_order()
{
    Channel const one[] = {Channel::A, Channel::B};
    Channel const other[] = {Channel::B, Channel::A};
    QVERIFY(!(ChannelSet(one, 2) == ChannelSet(other, 2)));
    QVERIFY(ChannelSet(one, 2) == ChannelSet(one, 2));
    QVERIFY(!(ChannelSet(one, 2) == ChannelSet(one, 1)));
    QVERIFY(ChannelSet(one, 2) < ChannelSet(other, 2));
    QVERIFY(ChannelSet(one, 1) < ChannelSet(one, 2));
    QVERIFY(!(ChannelSet(one, 2) < ChannelSet(one, 2)));
}

void TestValueSet::has_the_stated_capacities()
{
    QCOMPARE(ChannelSet::max_size, 40U);
    QCOMPARE(ChannelReportSet::max_size, 14U);
    QCOMPARE(ReportSet::max_size, 12U);
    QCOMPARE(TrackSet::max_size, 4U);
    QCOMPARE(ConfigurationItemAllowedValues::max_size, 64U);
    QCOMPARE(TrackInfoVector::max_size, 17U);
    QCOMPARE(TrackCountVector::max_size, 17U);
    QCOMPARE(TrackAttrVector::max_size, 12U);
    QCOMPARE(TrackChangeVector::max_size, 17U);
}

void TestValueSet::vector_keeps_duplicates()
{
    ConfigurationItemAllowedValues vector;
    vector.push_back(l1("a"));
    vector.push_back(l1("a"));
    QCOMPARE(vector.size(), 2U);
    QCOMPARE(*vector.begin(), l1("a"));
    vector.clear_all();
    QVERIFY(vector.empty() && vector.begin() == vector.end());
}

void TestValueSet::vector_ignores_what_is_beyond_its_capacity()
{
    AssertLog asserts;
    TrackAttrVector vector;
    for (int i = 0; i < 13; ++i)
        vector.push_back(TrackAttr());
    QCOMPARE(vector.size(), 12U);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("size() < capacity")});
}

void TestValueSet::vector_tells_valid_indices()
{
    AssertLog asserts;
    TrackCountVector vector;
    vector.push_back(Camera{7});
    QVERIFY(vector.valid_index(0) && vector.valid_index(0U));
    QVERIFY(!vector.valid_index(-1) && !vector.valid_index(1) && !vector.valid_index(1U));
    QCOMPARE(vector[0].track_count, 7ULL);
    QCOMPARE(vector[1].track_count, 0ULL);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("valid_index(index)")});
}

void TestValueSet::vector_compares_in_order()
{
    TrackCountVector one;
    TrackCountVector other;
    one.push_back(Camera{1});
    other.push_back(Camera{2});
    QVERIFY(one < other && !(other < one) && !(one == other));
    other.clear_all();
    QVERIFY(other < one);
    other.push_back(Camera{1});
    QVERIFY(one == other);
}

QTEST_GUILESS_MAIN(TestValueSet)
#include "tst_value_set.moc"
