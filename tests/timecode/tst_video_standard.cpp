// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/video_standard.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"
#include "tests/timecode/standard_numbers.h"

#include <QTest>
#include <vector>

using namespace Corvane;

namespace {

template <typename Enum> std::vector<int> walk()
{
    std::vector<int> values;
    Enum value{};
    if (!getfirst(&value))
        return values;
    do
        values.push_back(number(value));
    while (getnext(&value));
    return values;
}

std::vector<int> numbers(int first, int last)
{
    std::vector<int> values;
    for (int n = first; n <= last; ++n)
        values.push_back(n);
    return values;
}

template <typename Enum> bool no_next(int n)
{
    Enum value = static_cast<Enum>(n);
    return !getnext(&value) && number(value) == n;
}

constexpr int outside[] = {-1, 0, 11, 99, INT_MAX, INT_MIN};

} // namespace

class TestVideoStandard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void frequencies_data();
    void frequencies();
    void invalid_frequency_answers_as_nothing();
    void rough_frequency_gives_fields_per_second();
    void rough_frequency_0_is_an_assertion_and_gives_60();
    void resolutions_data();
    void resolutions();
    void invalid_resolution_is_interlaced_and_has_no_pixels();
    void standards_data();
    void standards();
    void invalid_standard_answers_as_its_parts_do();
    void text_of_a_standard_is_its_only_accepted_form();
    void pair_without_a_standard_gives_0();
    void standard_6_goes_out_as_standard_4_does();
    void wire_value_5_is_read_but_never_written();
    void reads_wire_standards();
    void reads_wire_rates_and_resolutions();
    void reads_wire_dropframe_flags();
    void invalid_values_for_the_wire_are_assertions();
    void default_flag_is_dropframe_where_there_is_one();
    void dropframe_by_frequency_data();
    void dropframe_by_frequency();
    void ranges_end_at_their_last_value();
    void walks_all_valid_values();
    void walking_ends_at_the_last_and_at_an_invalid_value();
};

void TestVideoStandard::frequencies_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("rough");
    QTest::addColumn<bool>("dropframe");
    auto const row = [](int value, char const *text, int rough, bool dropframe) {
        QTest::newRow(text) << value << QString::fromLatin1(text) << rough << dropframe;
    };
    row(1, "60Hz", 1, false);
    row(2, "59.94Hz", 1, true);
    row(3, "50Hz", 2, false);
    row(4, "48Hz", 3, false);
    row(5, "47.95Hz", 3, false);
    row(6, "30Hz", 4, false);
    row(7, "29.97Hz", 4, true);
    row(8, "25Hz", 5, false);
    row(9, "24Hz", 6, false);
    row(10, "23.98Hz", 6, false);
}

void TestVideoStandard::frequencies()
{
    QFETCH(int, value);
    QFETCH(QString, text);
    QFETCH(int, rough);
    QFETCH(bool, dropframe);
    QVERIFY(isValid(frequency(value)));
    QCOMPARE(toString(frequency(value)), AString(text));
    QCOMPARE(number(toVideoFrequency(AString(text))), value);
    QCOMPARE(number(toVideoFrequency(AString(text.toUpper()))), 0);
    QCOMPARE(number(toVideoRoughFrequency(frequency(value))), rough);
    QCOMPARE(hasDropframe(frequency(value)), dropframe);
    QCOMPARE(number(to_vctp3(frequency(value))), value - 1);
}

void TestVideoStandard::invalid_frequency_answers_as_nothing()
{
    for (int n : outside) {
        QVERIFY(!isValid(frequency(n)));
        QVERIFY(toString(frequency(n)).empty());
        QCOMPARE(number(toVideoRoughFrequency(frequency(n))), 0);
        QVERIFY(!hasDropframe(frequency(n)));
        QCOMPARE(number(defaultDropframeFlag(frequency(n))), 2);
    }
    QCOMPARE(number(toVideoFrequency(AString())), 0);
    QCOMPARE(number(toVideoFrequency("60"_a)), 0);
}

void TestVideoStandard::rough_frequency_gives_fields_per_second()
{
    std::vector<unsigned int> rates;
    for (int n = 1; n <= 6; ++n)
        rates.push_back(RoughFieldsPerSecond(static_cast<VideoRoughFrequency>(n)));
    QCOMPARE(rates, (std::vector<unsigned int>{60, 50, 48, 30, 25, 24}));
    QCOMPARE(RoughFieldsPerSecond(frequency(10)), 24u);
    QCOMPARE(RoughFieldsPerSecond(standard(19)), 50u);
}

void TestVideoStandard::rough_frequency_0_is_an_assertion_and_gives_60()
{
    AssertLog log;
    for (int n : {7, 99, -1})
        QCOMPARE(RoughFieldsPerSecond(static_cast<VideoRoughFrequency>(n)), 60u);
    QCOMPARE(log.take().size(), 0);
    QCOMPARE(RoughFieldsPerSecond(VideoRoughFrequency::invalid), 60u);
    QCOMPARE(log.take().size(), 1);
    QCOMPARE(RoughFieldsPerSecond(standard(0)), 60u);
    QCOMPARE(log.take().size(), 1);
}

void TestVideoStandard::resolutions_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("w");
    QTest::addColumn<int>("frame_h");
    QTest::addColumn<int>("field_h");
    QTest::addColumn<bool>("progressive");
    QTest::addColumn<bool>("high");
    auto const row = [](int value, char const *text, int w, int frame_h, int field_h,
                         bool progressive, bool high) {
        QTest::newRow(text) << value << QString::fromLatin1(text) << w << frame_h << field_h
                            << progressive << high;
    };
    row(1, "4K", 3840, 2160, 2160, true, true);
    row(2, "1080p", 1920, 1080, 1080, true, true);
    row(3, "1080i", 1920, 1080, 540, false, true);
    row(4, "1080psf", 1920, 1080, 540, false, true);
    row(5, "720p", 1280, 720, 720, true, true);
    row(6, "625i", 720, 576, 288, false, false);
    row(7, "525i", 720, 486, 243, false, false);
}

void TestVideoStandard::resolutions()
{
    QFETCH(int, value);
    QFETCH(QString, text);
    QFETCH(int, w);
    QFETCH(int, frame_h);
    QFETCH(int, field_h);
    QFETCH(bool, progressive);
    QFETCH(bool, high);
    VideoResolution const r = resolution(value);
    QVERIFY(isValid(r));
    QCOMPARE(toString(r), AString(text));
    QCOMPARE(number(toVideoResolution(AString(text))), number(r));
    QCOMPARE(int(width(r)), w);
    QCOMPARE(int(frame_height(r)), frame_h);
    QCOMPARE(int(field_height(r)), field_h);
    QCOMPARE(int(pixels_per_frame(r)), w * frame_h);
    QCOMPARE(int(pixels_per_field(r)), w * field_h);
    QCOMPARE(isProgressive(r), progressive);
    QCOMPARE(isInterlaced(r), !progressive);
    QCOMPARE(isHighDefinition(r), high);
    QCOMPARE(isStandardDefinition(r), !high);
    QCOMPARE(top_field_is_f1(r), value != 6);
}

void TestVideoStandard::invalid_resolution_is_interlaced_and_has_no_pixels()
{
    for (int n : {-1, 0, 8, INT_MAX}) {
        VideoResolution const r = resolution(n);
        QVERIFY(!isValid(r));
        QVERIFY(toString(r).empty());
        QVERIFY(isInterlaced(r));
        QVERIFY(!isProgressive(r));
        QVERIFY(!isHighDefinition(r));
        QVERIFY(!isStandardDefinition(r));
        QVERIFY(top_field_is_f1(r));
        QCOMPARE(pixels_per_frame(r), 0u);
        QCOMPARE(pixels_per_field(r), 0u);
    }
    QCOMPARE(number(toVideoResolution("1080I"_a)), 0);
    QCOMPARE(number(toVideoResolution(AString())), 0);
}

void TestVideoStandard::standards_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("frequency_value");
    QTest::addColumn<int>("resolution_value");
    QTest::addColumn<int>("wire");
    QTest::addColumn<QString>("text");
    auto const row = [](int value, int f, int r, int wire, char const *text) {
        QTest::newRow(text) << value << f << r << wire << QString::fromLatin1(text);
    };
    row(1, 1, 1, 0, "4K 60Hz");
    row(2, 2, 1, 1, "4K 59.94Hz");
    row(3, 3, 1, 2, "4K 50Hz");
    row(4, 6, 1, 3, "4K 30Hz");
    row(5, 7, 1, 4, "4K 29.97Hz");
    row(6, 8, 1, 3, "4K 25Hz");
    row(7, 9, 1, 6, "4K 24Hz");
    row(8, 10, 1, 7, "4K 23.98Hz");
    row(9, 1, 2, 8, "1080p 60Hz");
    row(10, 2, 2, 9, "1080p 59.94Hz");
    row(11, 3, 2, 10, "1080p 50Hz");
    row(12, 6, 2, 11, "1080p 30Hz");
    row(13, 7, 2, 12, "1080p 29.97Hz");
    row(14, 8, 2, 13, "1080p 25Hz");
    row(15, 9, 2, 14, "1080p 24Hz");
    row(16, 10, 2, 15, "1080p 23.98Hz");
    row(17, 5, 4, 16, "1080psf 47.95Hz");
    row(18, 2, 3, 18, "1080i 59.94Hz");
    row(19, 3, 3, 19, "1080i 50Hz");
    row(20, 4, 3, 20, "1080i 48Hz");
    row(21, 5, 3, 21, "1080i 47.95Hz");
    row(22, 1, 5, 22, "720p 60Hz");
    row(23, 2, 5, 23, "720p 59.94Hz");
    row(24, 3, 5, 24, "720p 50Hz");
    row(25, 3, 6, 25, "625i 50Hz");
    row(26, 2, 7, 26, "525i 59.94Hz");
}

void TestVideoStandard::standards()
{
    QFETCH(int, value);
    QFETCH(int, frequency_value);
    QFETCH(int, resolution_value);
    QFETCH(int, wire);
    QFETCH(QString, text);
    VideoStandard const s = standard(value);
    VideoFrequency const f = frequency(frequency_value);
    VideoResolution const r = resolution(resolution_value);
    QVERIFY(isValid(s));
    QCOMPARE(number(toVideoFrequency(s)), number(f));
    QCOMPARE(number(toVideoResolution(s)), number(r));
    QCOMPARE(number(to_vctp3(s)), wire);
    QCOMPARE(toString(s), AString(text));
    QCOMPARE(number(toVideoStandard(AString(text))), number(s));
    QCOMPARE(number(toVideoStandard(r, f)), number(s));
    QCOMPARE(number(toVideoRoughFrequency(s)), number(toVideoRoughFrequency(f)));
    QCOMPARE(RoughFieldsPerSecond(s), RoughFieldsPerSecond(f));
    QCOMPARE(hasDropframe(s), hasDropframe(f));
    QCOMPARE(number(defaultDropframeFlag(s)), number(defaultDropframeFlag(f)));
    for (int n = -1; n <= 3; ++n)
        QCOMPARE(number(dropframeByVideoStandard(s, flag(n))),
            number(dropframeByVideoFrequency(f, flag(n))));
    QCOMPARE(width(s), width(r));
    QCOMPARE(frame_height(s), frame_height(r));
    QCOMPARE(field_height(s), field_height(r));
    QCOMPARE(pixels_per_frame(s), pixels_per_frame(r));
    QCOMPARE(pixels_per_field(s), pixels_per_field(r));
    QCOMPARE(isInterlaced(s), isInterlaced(r));
    QCOMPARE(isProgressive(s), isProgressive(r));
    QCOMPARE(isHighDefinition(s), isHighDefinition(r));
    QCOMPARE(isStandardDefinition(s), isStandardDefinition(r));
    QCOMPARE(top_field_is_f1(s), top_field_is_f1(r));
}

void TestVideoStandard::invalid_standard_answers_as_its_parts_do()
{
    for (int n : {-1, 0, 27, INT_MAX, INT_MIN}) {
        VideoStandard const s = standard(n);
        QVERIFY(!isValid(s));
        QCOMPARE(number(toVideoFrequency(s)), 0);
        QCOMPARE(number(toVideoResolution(s)), 0);
        QVERIFY(toString(s).empty());
        QVERIFY(isInterlaced(s));
        QVERIFY(!hasDropframe(s));
        QCOMPARE(number(defaultDropframeFlag(s)), 2);
        QCOMPARE(pixels_per_frame(s), 0u);
    }
}

void TestVideoStandard::text_of_a_standard_is_its_only_accepted_form()
{
    QCOMPARE(number(toVideoStandard("1080i 59.94Hz"_a)), 18);
    for (char const *text : {"1080i 59.94hz", "1080i  59.94Hz", " 1080i 59.94Hz", "1080i", "",
             "1080_59_94i", "1080i 59.94Hz "})
        QCOMPARE(number(toVideoStandard(AString::l1(text))), 0);
}

void TestVideoStandard::pair_without_a_standard_gives_0()
{
    QCOMPARE(number(toVideoStandard(resolution(2), frequency(4))), 0);
    int pairs = 0;
    for (int r = -1; r <= 9; ++r) {
        for (int f = -1; f <= 12; ++f)
            pairs += toVideoStandard(resolution(r), frequency(f)) != VideoStandard::invalid ? 1 : 0;
    }
    QCOMPARE(pairs, 26);
}

void TestVideoStandard::standard_6_goes_out_as_standard_4_does()
{
    QCOMPARE(to_vctp3(standard(4)), to_vctp3(standard(6)));
    QCOMPARE(number(to_vctp3(standard(6))), 3);
}

void TestVideoStandard::wire_value_5_is_read_but_never_written()
{
    QCOMPARE(number(toVideoStandard(static_cast<VCTP3::VideoStandard>(5))), 6);
    for (int n = 1; n <= 26; ++n)
        QVERIFY(number(to_vctp3(standard(n))) != 5);
}

void TestVideoStandard::reads_wire_standards()
{
    for (int wire = -2; wire <= 30; ++wire) {
        int const expected = wire >= 0 && wire <= 16 ? wire + 1
            : wire >= 18 && wire <= 26               ? wire
                                                     : 0;
        auto const value = static_cast<VCTP3::VideoStandard>(wire);
        QCOMPARE(number(toVideoStandard(value)), expected);
        QCOMPARE(number(toVideoFrequency(value)), number(toVideoFrequency(standard(expected))));
        VCTP3::ClipInfo clip;
        clip.video_standard = value;
        QCOMPARE(number(toVideoStandard(clip)), expected);
    }
}

void TestVideoStandard::reads_wire_rates_and_resolutions()
{
    for (int wire = -1; wire <= 11; ++wire) {
        QCOMPARE(number(toVideoFrequency(static_cast<VCTP3::VideoRate>(wire))),
            wire >= 0 && wire <= 9 ? wire + 1 : 0);
        QCOMPARE(number(toVideoResolution(static_cast<VCTP3::VideoResolution>(wire))),
            wire >= 0 && wire <= 6 ? wire + 1 : 0);
    }
}

void TestVideoStandard::reads_wire_dropframe_flags()
{
    for (int wire = -1; wire <= 2; ++wire)
        QCOMPARE(number(toDropframeFlag(static_cast<VCTP3::DropFrameFlag>(wire))),
            wire == 0       ? 1
                : wire == 1 ? 2
                            : 0);
    QCOMPARE(number(to_vctp3(flag(1))), 0);
    QCOMPARE(number(to_vctp3(flag(2))), 1);
    QCOMPARE(toString(flag(1)), "df"_a);
    QCOMPARE(toString(flag(2)), "ndf"_a);
    QVERIFY(toString(flag(0)).empty());
    QVERIFY(toString(flag(3)).empty());
    QCOMPARE(number(toDropframeFlag("df"_a)), 1);
    QCOMPARE(number(toDropframeFlag("ndf"_a)), 2);
    QCOMPARE(number(toDropframeFlag("DF"_a)), 0);
}

void TestVideoStandard::invalid_values_for_the_wire_are_assertions()
{
    AssertLog log;
    for (int n : {0, 11, -1})
        QCOMPARE(number(to_vctp3(frequency(n))), 1);
    QCOMPARE(log.take().size(), 3);
    for (int n : {0, 3, -1})
        QCOMPARE(number(to_vctp3(flag(n))), 0);
    QCOMPARE(log.take().size(), 3);
    for (int n : {0, 27, -1})
        QCOMPARE(number(to_vctp3(standard(n))), 18);
    QCOMPARE(log.take().size(), 3);
}

void TestVideoStandard::default_flag_is_dropframe_where_there_is_one()
{
    for (int n = 1; n <= 10; ++n)
        QCOMPARE(number(defaultDropframeFlag(frequency(n))), n == 2 || n == 7 ? 1 : 2);
}

void TestVideoStandard::dropframe_by_frequency_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("on_59_94");
    QTest::addColumn<int>("on_50");
    QTest::newRow("none") << 0 << 0 << 0;
    QTest::newRow("dropframe") << 1 << 1 << 2;
    QTest::newRow("non-dropframe") << 2 << 2 << 2;
    QTest::newRow("above") << 3 << 0 << 0;
    QTest::newRow("below") << -1 << 0 << 0;
}

void TestVideoStandard::dropframe_by_frequency()
{
    QFETCH(int, value);
    QFETCH(int, on_59_94);
    QFETCH(int, on_50);
    QCOMPARE(number(dropframeByVideoFrequency(frequency(2), flag(value))), on_59_94);
    QCOMPARE(number(dropframeByVideoFrequency(frequency(7), flag(value))), on_59_94);
    QCOMPARE(number(dropframeByVideoFrequency(frequency(3), flag(value))), on_50);
    QCOMPARE(number(dropframeByVideoFrequency(frequency(0), flag(value))), on_50);
}

void TestVideoStandard::ranges_end_at_their_last_value()
{
    for (int n = -1; n <= 30; ++n) {
        QCOMPARE(isValid(frequency(n)), n >= 1 && n <= 10);
        QCOMPARE(isValid(static_cast<VideoRoughFrequency>(n)), n >= 1 && n <= 6);
        QCOMPARE(isValid(resolution(n)), n >= 1 && n <= 7);
        QCOMPARE(isValid(flag(n)), n >= 1 && n <= 2);
        QCOMPARE(isValid(standard(n)), n >= 1 && n <= 26);
    }
}

void TestVideoStandard::walks_all_valid_values()
{
    QCOMPARE(walk<VideoFrequency>(), numbers(1, 10));
    QCOMPARE(walk<VideoRoughFrequency>(), numbers(1, 6));
    QCOMPARE(walk<VideoResolution>(), numbers(1, 7));
    QCOMPARE(walk<DropframeFlag>(), numbers(1, 2));
    QCOMPARE(walk<VideoStandard>(), numbers(1, 26));
}

void TestVideoStandard::walking_ends_at_the_last_and_at_an_invalid_value()
{
    for (int n : {0, -1, 99}) {
        QVERIFY(no_next<VideoFrequency>(n));
        QVERIFY(no_next<VideoRoughFrequency>(n));
        QVERIFY(no_next<VideoResolution>(n));
        QVERIFY(no_next<DropframeFlag>(n));
        QVERIFY(no_next<VideoStandard>(n));
    }
    QVERIFY(no_next<VideoFrequency>(10));
    QVERIFY(no_next<VideoRoughFrequency>(6));
    QVERIFY(no_next<VideoResolution>(7));
    QVERIFY(no_next<DropframeFlag>(2));
    QVERIFY(no_next<VideoStandard>(26));
}

QTEST_GUILESS_MAIN(TestVideoStandard)
#include "tst_video_standard.moc"
