// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/track_set.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"
#include "tests/timecode/standard_numbers.h"

#include <QTest>

using namespace Corvane;

namespace {

TrackType type(int n)
{
    return static_cast<TrackType>(n);
}
TrackSet set(int n)
{
    return static_cast<TrackSet>(n);
}
VCTP3::TrackInfo track(int wire)
{
    VCTP3::TrackInfo info;
    info.track_type = static_cast<VCTP3::TrackType>(wire);
    return info;
}

} // namespace

class TestTrackSet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void types_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("bit");
        QTest::newRow("video") << 1 << 1;
        QTest::newRow("key") << 2 << 2;
        QTest::newRow("audio") << 3 << 4;
        QTest::newRow("timecode") << 4 << 8;
    }
    void types()
    {
        QFETCH(int, value);
        QFETCH(int, bit);
        AString const text = AString::l1(QTest::currentDataTag());
        QVERIFY(isValid(type(value)));
        QCOMPARE(toString(type(value)), text);
        QCOMPARE(number(toTrackType(text)), number(type(value)));
        QCOMPARE(
            number(toTrackType(static_cast<VCTP3::TrackType>(value - 1))), number(type(value)));
        QCOMPARE(number(combine(TrackSet::none, type(value))), number(set(bit)));
    }

    void invalid_type_has_no_text()
    {
        for (int n : {-1, 0, 5, 99}) {
            QVERIFY(!isValid(type(n)));
            QVERIFY(toString(type(n)).empty());
        }
        QCOMPARE(number(toTrackType("Video"_a)), number(TrackType::invalid));
        QCOMPARE(number(toTrackType(AString())), number(TrackType::invalid));
        for (int wire : {-1, 4})
            QCOMPARE(number(toTrackType(static_cast<VCTP3::TrackType>(wire))),
                number(TrackType::invalid));
    }

    void texts_of_all_sets_read_back()
    {
        char const *const texts[] = {"----", "V---", "-K--", "VK--", "--A-", "V-A-", "-KA-", "VKA-",
            "---T", "V--T", "-K-T", "VK-T", "--AT", "V-AT", "-KAT", "VKAT"};
        for (int n = 0; n < 16; ++n) {
            QVERIFY(isValid(set(n)));
            QCOMPARE(toString(set(n)), AString::l1(texts[n]));
            QCOMPARE(number(toTrackSet(AString::l1(texts[n]))), number(set(n)));
        }
    }

    void other_texts_give_16()
    {
        for (char const *text : {"VA", "", "KV--", "vkat", "VKAT ", "-----", "V-A", "VKATV"})
            QCOMPARE(number(toTrackSet(AString::l1(text))), 16);
    }

    void invalid_set_has_no_text()
    {
        for (int n : {-1, 16, 17}) {
            QVERIFY(!isValid(set(n)));
            QVERIFY(toString(set(n)).empty());
        }
    }

    void combining_is_an_or_of_bits()
    {
        for (int a = 0; a < 16; ++a) {
            for (int b = 0; b < 16; ++b)
                QCOMPARE(number(combine(set(a), set(b))), a | b);
            for (int t = 1; t <= 4; ++t) {
                QCOMPARE(number(combine(set(a), type(t))), a | 1 << (t - 1));
                QCOMPARE(number(combine(set(a), track(t - 1))), a | 1 << (t - 1));
            }
        }
    }

    void what_is_invalid_stays_invalid()
    {
        QCOMPARE(number(combine(TrackSet::invalid, TrackSet::video)), number(TrackSet::invalid));
        QCOMPARE(number(combine(TrackSet::video, TrackSet::invalid)), number(TrackSet::invalid));
        QCOMPARE(number(combine(TrackSet::invalid, TrackType::key)), number(TrackSet::invalid));
        QCOMPARE(number(combine(TrackSet::video, TrackType::invalid)), number(TrackSet::invalid));
        QCOMPARE(number(combine(TrackSet::video, track(4))), number(TrackSet::invalid));
    }

    void set_of_a_clip_is_that_of_its_tracks()
    {
        VCTP3::ClipInfo clip;
        QCOMPARE(number(toTrackSet(clip)), number(TrackSet::none));
        for (int wire : {0, 2, 2, 3})
            clip.track_info_vector.push_back(track(wire));
        QCOMPARE(number(toTrackSet(clip)), number(toTrackSet("V-AT"_a)));
        QCOMPARE(number(toTrackSet(clip.track_info_vector)), 13);
    }

    void track_of_unknown_type_makes_the_whole_set_invalid()
    {
        VCTP3::TrackInfoVector tracks;
        for (int wire : {0, 7, 1})
            tracks.push_back(track(wire));
        QCOMPARE(number(toTrackSet(tracks)), 16);
    }

    void walks_all_valid_values()
    {
        TrackType t{};
        QVERIFY(getfirst(&t));
        for (int n = 1; n < 4; ++n) {
            QCOMPARE(number(t), number(type(n)));
            QVERIFY(getnext(&t));
        }
        QVERIFY(!getnext(&t));
        QCOMPARE(number(t), number(type(4)));
        TrackSet s{};
        QVERIFY(getfirst(&s));
        for (int n = 0; n < 15; ++n) {
            QCOMPARE(number(s), number(set(n)));
            QVERIFY(getnext(&s));
        }
        QVERIFY(!getnext(&s));
        QCOMPARE(number(s), number(set(15)));
        for (int n : {-1, 16}) {
            s = set(n);
            QVERIFY(!getnext(&s));
            QCOMPARE(number(s), number(set(n)));
        }
        t = TrackType::invalid;
        QVERIFY(!getnext(&t));
    }
};

QTEST_GUILESS_MAIN(TestTrackSet)
#include "tst_track_set.moc"
