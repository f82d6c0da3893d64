// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/clip_timecode.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/record_xml.h"
#include "tests/protocol/protocol_texts.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_print.h"
#include "tests/timecode/standard_numbers.h"

#include <QTest>
#include <climits>

using namespace Corvane;

namespace {

VCTP3::Timecode wire(int standard_value, int position)
{
    VCTP3::Timecode t;
    t.valid = true;
    t.set_std(static_cast<VCTP3::VideoStandard>(standard_value));
    t.set_position(position);
    return t;
}

VCTP3::SmallTimecode small(int position)
{
    VCTP3::SmallTimecode t;
    t.set_position(position);
    return t;
}

VCTP3::DropFrameFlag wire_flag(int n)
{
    return static_cast<VCTP3::DropFrameFlag>(n);
}

/// A timecode as a report brings it.
VCTP3::Timecode read(QByteArray const &text)
{
    VCTP3::Timecode t;
    AString error;
    if (!VCTP3::read_element(
            tree_of("<r>" + text + "</r>"), AString::l1("DisplayTimecode"), &t, &error))
        qFatal("%s", qPrintable(QString(error)));
    return t;
}

/// Rows of bytes as hexadecimal digits, and the timecode that they are at a frequency.
auto byte_rows()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<int>("flag_value");
    return [](char const *name, int value, char const *hex, char const *shown, int flag_value) {
        QTest::newRow(name) << value << QByteArray::fromHex(hex) << QString::fromLatin1(shown)
                            << flag_value;
    };
}

template <std::size_t size>
void check_bytes(
    ATimecode (*read_bytes)(VideoFrequency, std::span<unsigned char const, size> const &))
{
    QFETCH(int, value);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, shown);
    QFETCH(int, flag_value);
    unsigned char raw[size];
    std::copy(bytes.begin(), bytes.end(), raw);
    ATimecode const t = read_bytes(frequency(value), raw);
    QCOMPARE(t.toString(4), AString(shown));
    QCOMPARE(number(t.get_df()), flag_value);
}

constexpr int wire_1080_29_97p = 12;
constexpr int wire_1080_59_94i = 18;
constexpr int wire_625_50i = 25;

} // namespace

class TestATimecodeWire : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void needs_its_defined_standard_and_position_parts();
    void position_is_divided_by_the_speed();
    void speed_of_0_on_the_wire_gives_undefined();
    void default_speed_of_0_is_an_assertion_where_it_is_needed();
    void flag_is_the_dropframe_part_or_the_default();
    void keeps_a_dropframe_part_as_passed();
    void unknown_dropframe_part_gives_undefined();
    void negative_position_counts_as_32_bits();
    void small_timecode_keeps_its_count_whatever_the_speed();
    void small_timecode_takes_its_flag_only_where_there_is_dropframe();
    void small_timecode_of_each_frequency_takes_its_flag();
    void small_timecode_without_a_position_is_undefined();
    void goes_out_with_standard_position_and_flag();
    void goes_out_empty_while_undefined();
    void goes_out_as_1080i_where_no_standard_fits();
    void goes_out_in_the_resolution_of_a_standard();
    void text_of_a_report_comes_back_data();
    void text_of_a_report_comes_back();
    void sony_bytes_are_numbers_with_flags_data();
    void sony_bytes_are_numbers_with_flags();
    void tc64_digits_are_joined_to_bytes_data();
    void tc64_digits_are_joined_to_bytes();
    void tc64_of_all_ones_is_undefined();
    void bytes_at_an_invalid_frequency_are_undefined();
    void clip_starts_by_its_timecode_source();
    void stripe_without_a_speed_is_taken_at_1();
    void clip_without_frame0_is_zero_based();
    void clip_of_an_unknown_source_has_no_start();
    void clip_with_an_undefined_stripe_is_undefined();
};

void TestATimecodeWire::needs_its_defined_standard_and_position_parts()
{
    VCTP3::Timecode const all = wire(wire_1080_59_94i, 3600);
    ATimecode const t(all, 1);
    QCOMPARE(t.get_nfields(), 3600u);
    QCOMPARE(number(t.get_std()), 2);
    QVERIFY(t.is_df());
    VCTP3::Timecode part = all;
    part.valid = false;
    QVERIFY(ATimecode(part, 1).is_undefined());
    part = all;
    part.has_std = false;
    QVERIFY(ATimecode(part, 1).is_undefined());
    part = all;
    part.has_position = false;
    QVERIFY(ATimecode(part, 1).is_undefined());
    QVERIFY(ATimecode(VCTP3::Timecode(), 1).is_undefined());
    QVERIFY(ATimecode(wire(17, 3600), 1).is_undefined());
    QVERIFY(ATimecode(wire(99, 3600), 1).is_undefined());
}

void TestATimecodeWire::position_is_divided_by_the_speed()
{
    VCTP3::Timecode t = wire(wire_625_50i, 301);
    QCOMPARE(ATimecode(t, 3).get_nfields(), 100u);
    QCOMPARE(ATimecode(t, 3).get_ssm_speed(), 3u);
    t.set_ssm_speed(2);
    QCOMPARE(ATimecode(t, 3).get_nfields(), 150u);
    QCOMPARE(ATimecode(t, 3).get_ssm_speed(), 2u);
}

void TestATimecodeWire::speed_of_0_on_the_wire_gives_undefined()
{
    AssertLog log;
    VCTP3::Timecode t = wire(wire_625_50i, 301);
    t.set_ssm_speed(0);
    QVERIFY(ATimecode(t, 3).is_undefined());
    QVERIFY(ATimecode(t, 0).is_undefined());
    // What a server sends is no fault of the caller.
    QCOMPARE(log.take().size(), 0);
}

void TestATimecodeWire::default_speed_of_0_is_an_assertion_where_it_is_needed()
{
    AssertLog log;
    VCTP3::Timecode t = wire(wire_625_50i, 301);
    QVERIFY(ATimecode(t, 0).is_undefined());
    QCOMPARE(log.take().size(), 1);
    t.set_ssm_speed(2);
    QCOMPARE(ATimecode(t, 0).get_nfields(), 150u);
    t = wire(wire_625_50i, 301);
    t.valid = false;
    QVERIFY(ATimecode(t, 0).is_undefined());
    QCOMPARE(log.take().size(), 0);
}

void TestATimecodeWire::flag_is_the_dropframe_part_or_the_default()
{
    VCTP3::Timecode t = wire(wire_1080_59_94i, 3600);
    QVERIFY(ATimecode(t, 1).is_df());
    t.set_dfflag(wire_flag(1));
    QVERIFY(ATimecode(t, 1).is_ndf());
    t.set_dfflag(wire_flag(0));
    QVERIFY(ATimecode(t, 1).is_df());
    QVERIFY(ATimecode(wire(wire_625_50i, 3600), 1).is_ndf());
}

void TestATimecodeWire::keeps_a_dropframe_part_as_passed()
{
    VCTP3::Timecode t = wire(wire_625_50i, 3000);
    t.set_dfflag(wire_flag(0));
    ATimecode const kept(t, 1);
    QVERIFY(kept.is_df());
    QCOMPARE(kept.get_seconds(), 60u);
    QCOMPARE(kept.toString(4), AString::l1("00.00.60.00"));
}

void TestATimecodeWire::unknown_dropframe_part_gives_undefined()
{
    for (int value : {wire_1080_59_94i, wire_625_50i}) {
        VCTP3::Timecode t = wire(value, 3000);
        t.set_dfflag(wire_flag(7));
        QVERIFY(ATimecode(t, 1).is_undefined());
    }
}

void TestATimecodeWire::negative_position_counts_as_32_bits()
{
    QCOMPARE(ATimecode(wire(wire_625_50i, -1), 1).get_nfields(), UINT_MAX);
    QCOMPARE(ATimecode(wire(wire_625_50i, -1), 3).get_nfields(), UINT_MAX / 3);
    QCOMPARE(ATimecode(VideoFrequency::v50, small(-1), 1).get_nfields(), UINT_MAX);
    QCOMPARE(ATimecode(VideoFrequency::v50, UINT_MAX, 1).to_vctp3(resolution(3)).position, -1);
}

void TestATimecodeWire::small_timecode_keeps_its_count_whatever_the_speed()
{
    ATimecode const by_frequency(VideoFrequency::v50, small(301), 3);
    QCOMPARE(by_frequency.get_nfields(), 301u);
    QCOMPARE(by_frequency.get_ssm_speed(), 3u);
    ATimecode const by_rate(VCTP3::VideoRate::v50, small(301), 3);
    QCOMPARE(by_rate.get_nfields(), 301u);
    QCOMPARE(number(by_rate.get_std()), 3);
    ATimecode const by_standard(VCTP3::VideoStandard::v525_59_94i, small(301), 3);
    QCOMPARE(by_standard.get_nfields(), 301u);
    QCOMPARE(number(by_standard.get_std()), 2);
    QVERIFY(ATimecode(frequency(0), small(1), 1).is_undefined());
    QVERIFY(ATimecode(static_cast<VCTP3::VideoRate>(10), small(1), 1).is_undefined());
    QVERIFY(ATimecode(VCTP3::VideoStandard::v1080_60i, small(1), 1).is_undefined());
}

void TestATimecodeWire::small_timecode_takes_its_flag_only_where_there_is_dropframe()
{
    VCTP3::SmallTimecode t = small(3000);
    QVERIFY(ATimecode(VideoFrequency::v59_94, t, 1).is_df());
    t.set_dfflag(wire_flag(1));
    QVERIFY(ATimecode(VideoFrequency::v59_94, t, 1).is_ndf());
    QVERIFY(ATimecode(VideoFrequency::v50, t, 1).is_ndf());
    t.set_dfflag(wire_flag(0));
    QVERIFY(ATimecode(VideoFrequency::v59_94, t, 1).is_df());
    QVERIFY(ATimecode(VideoFrequency::v50, t, 1).is_ndf());
    t.set_dfflag(wire_flag(7));
    QVERIFY(ATimecode(VideoFrequency::v59_94, t, 1).is_undefined());
    QVERIFY(ATimecode(VideoFrequency::v50, t, 1).is_ndf());
}

void TestATimecodeWire::small_timecode_of_each_frequency_takes_its_flag()
{
    for (int n = 1; n <= 10; ++n) {
        bool const dropframe = n == 2 || n == 7;
        auto const taken = [n](VCTP3::SmallTimecode const &t) {
            return number(ATimecode(frequency(n), t, 1).get_df());
        };
        VCTP3::SmallTimecode t = small(3000);
        QCOMPARE(taken(t), dropframe ? 1 : 2);
        t.set_dfflag(wire_flag(0));
        QCOMPARE(taken(t), dropframe ? 1 : 2);
        t.set_dfflag(wire_flag(1));
        QCOMPARE(taken(t), 2);
        t.set_dfflag(wire_flag(7));
        QCOMPARE(taken(t), dropframe ? 0 : 2);
    }
}

void TestATimecodeWire::small_timecode_without_a_position_is_undefined()
{
    QVERIFY(ATimecode(VideoFrequency::v50, VCTP3::SmallTimecode(), 1).is_undefined());
}

void TestATimecodeWire::goes_out_with_standard_position_and_flag()
{
    VCTP3::Timecode t = ATimecode(VideoFrequency::v59_94, flag(2), 300, 3).to_vctp3(resolution(3));
    VCTP3::Timecode expected = wire(wire_1080_59_94i, 100);
    expected.set_dfflag(wire_flag(1));
    QVERIFY(t == expected);
    QVERIFY(!t.has_ssm_speed);
    t = ATimecode(VideoFrequency::v50, flag(1), 100, 1).to_vctp3(resolution(6));
    QVERIFY(t == wire(wire_625_50i, 100));
    QVERIFY(!t.has_dfflag);
    t = ATimecode(VideoFrequency::v29_97, flag(1), 100, 1).to_vctp3(resolution(2));
    expected = wire(wire_1080_29_97p, 100);
    expected.set_dfflag(wire_flag(0));
    QVERIFY(t == expected);
    t = ATimecode(VideoFrequency::v29_97, flag(2), 100, 1).to_vctp3(resolution(2));
    expected.set_dfflag(wire_flag(1));
    QVERIFY(t == expected);
    // 4K at 25 Hz has no word of its own.
    t = ATimecode(VideoFrequency::v25, 100, 1).to_vctp3(resolution(1));
    QCOMPARE(number(t.std), 3);
}

void TestATimecodeWire::goes_out_empty_while_undefined()
{
    AssertLog log;
    QVERIFY(ATimecode().to_vctp3(resolution(3)) == VCTP3::Timecode());
    QVERIFY(ATimecode().to_vctp3(VCTP3::VideoStandard::v625_50i) == VCTP3::Timecode());
    QCOMPARE(log.take().size(), 0);
}

void TestATimecodeWire::goes_out_as_1080i_where_no_standard_fits()
{
    AssertLog log;
    ATimecode const t(VideoFrequency::v24, 100, 1);
    QVERIFY(t.to_vctp3(resolution(6)) == wire(wire_1080_59_94i, 100));
    QCOMPARE(log.take().size(), 1);
    QVERIFY(t.to_vctp3(resolution(0)) == wire(wire_1080_59_94i, 100));
    QCOMPARE(log.take().size(), 1);
}

void TestATimecodeWire::goes_out_in_the_resolution_of_a_standard()
{
    ATimecode const t(VideoFrequency::v50, 100, 1);
    QVERIFY(t.to_vctp3(VCTP3::VideoStandard::v720_60p) == t.to_vctp3(resolution(5)));
    QVERIFY(t.to_vctp3(VCTP3::VideoStandard::v1080_60i) == VCTP3::Timecode());
    QVERIFY(t.to_vctp3(static_cast<VCTP3::VideoStandard>(99)) == VCTP3::Timecode());
}

void TestATimecodeWire::text_of_a_report_comes_back_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("dropframe") << QByteArray(
        "<DisplayTimecode><Valid>true</Valid><VideoStandard>1080_59_94i"
        "</VideoStandard><FieldNumber>3601</FieldNumber><DropFrameFlag>df"
        "</DropFrameFlag></DisplayTimecode>")
                               << QStringLiteral("00;01;00;02");
    QTest::newRow("non-dropframe")
        << QByteArray("<DisplayTimecode><Valid>true</Valid><VideoStandard>525_59_94i"
                      "</VideoStandard><FieldNumber>3601</FieldNumber><DropFrameFlag>ndf"
                      "</DropFrameFlag></DisplayTimecode>")
        << QStringLiteral("00:01:00:00");
    QTest::newRow("50 Hz") << QByteArray(
        "<DisplayTimecode><Valid>true</Valid><VideoStandard>625_50i"
        "</VideoStandard><FieldNumber>180000</FieldNumber></DisplayTimecode>")
                           << QStringLiteral("01.00.00.00");
    QTest::newRow("undefined") << QByteArray(
        "<DisplayTimecode><Valid>false</Valid></DisplayTimecode>")
                               << QStringLiteral("(invalid)");
}

void TestATimecodeWire::text_of_a_report_comes_back()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, shown);
    VCTP3::Timecode const record = read(text);
    ATimecode const t(record, 1);
    QCOMPARE(t.toString(4), AString(shown));
    QVERIFY(t.to_vctp3(record.std) == record);
}

void TestATimecodeWire::sony_bytes_are_numbers_with_flags_data()
{
    auto const row = byte_rows();
    row("50 Hz", 3, "01020304", "01.02.03.04", 2);
    row("50 Hz F2", 3, "81020304", "01:02:03:04", 2);
    row("50 Hz, no F2 there", 3, "01028304", "01.02.03.04", 2);
    row("50 Hz, no dropframe", 3, "01020344", "01.02.03.04", 2);
    row("25 Hz, no dropframe", 8, "01020344", "01.02.03.04", 2);
    row("60 Hz, no dropframe", 1, "01020344", "01.02.03.04", 2);
    row("60 Hz F2", 1, "01028304", "01:02:03:04", 2);
    row("60 Hz, no F2 there", 1, "81020304", "01.02.03.04", 2);
    row("59.94 Hz ndf", 2, "01020304", "01.02.03.04", 2);
    row("59.94 Hz df", 2, "01020344", "01,02,03,04", 1);
    row("59.94 Hz df F2", 2, "01028344", "01;02;03;04", 1);
    row("29.97 Hz df", 7, "81020344", "01,02,03,04", 1);
    row("29.97 Hz ndf", 7, "01020304", "01.02.03.04", 2);
    // 0x12 is 18: no decimal digits in pairs.
    row("as they stand", 3, "12101018", "18.16.16.24", 2);
    // Of the minutes all bits count, of the frames all but the flag: 128 of each.
    row("high bits", 3, "00800080", "02.08.05.03", 2);
}

void TestATimecodeWire::sony_bytes_are_numbers_with_flags()
{
    check_bytes(&ATimecode::from_sony);
}

void TestATimecodeWire::tc64_digits_are_joined_to_bytes_data()
{
    auto const row = byte_rows();
    row("units", 3, "0100020003000400", "01.02.03.04", 2);
    row("tens weigh 16", 3, "0201000100010801", "18.16.16.24", 2);
    row("high halves do not count", 3, "f1f0f2f0f3f0f4f0", "01.02.03.04", 2);
    row("50 Hz F2", 3, "0108020003000400", "01:02:03:04", 2);
    row("60 Hz F2", 1, "0100020003080400", "01:02:03:04", 2);
    row("59.94 Hz df", 2, "0100020003000404", "01,02,03,04", 1);
    row("59.94 Hz ndf", 2, "0100020003000400", "01.02.03.04", 2);
    row("50 Hz, no dropframe", 3, "0100020003000404", "01.02.03.04", 2);
    row("25 Hz, no dropframe", 8, "0100020003000404", "01.02.03.04", 2);
}

void TestATimecodeWire::tc64_digits_are_joined_to_bytes()
{
    check_bytes(&ATimecode::from_tc64);
}

void TestATimecodeWire::tc64_of_all_ones_is_undefined()
{
    unsigned char eight[8];
    std::fill(std::begin(eight), std::end(eight), static_cast<unsigned char>(0xff));
    QVERIFY(ATimecode::from_tc64(VideoFrequency::v50, eight).is_undefined());
    eight[7] = 0xfe;
    QVERIFY(ATimecode::from_tc64(VideoFrequency::v50, eight).is_defined());
}

void TestATimecodeWire::bytes_at_an_invalid_frequency_are_undefined()
{
    unsigned char const zeros[8] = {};
    unsigned char const four[4] = {};
    for (int n : {-1, 0, 11}) {
        QVERIFY(ATimecode::from_sony(frequency(n), four).is_undefined());
        QVERIFY(ATimecode::from_tc64(frequency(n), zeros).is_undefined());
    }
}

void TestATimecodeWire::clip_starts_by_its_timecode_source()
{
    VCTP3::ClipInfo clip;
    clip.video_standard = VCTP3::VideoStandard::v1080_50i;
    clip.stripe_timecode = wire(wire_1080_59_94i, 3600);
    clip.stripe_timecode.set_ssm_speed(3);
    clip.set_frame0tc(small(500));
    clip.clip_length = 70;
    struct
    {
        int source;
        unsigned int start;
        int frequency;
    } const expected[] = {{0, 0, 2}, {1, 1200, 2}, {2, 500, 3}, {3, 500, 3}};
    for (auto const &row : expected) {
        clip.timecode_source = static_cast<VCTP3::TimecodeSource>(row.source);
        ATimecode const start = start_timecode(clip);
        QVERIFY(start.is_defined());
        QCOMPARE(start.get_nfields(), row.start);
        QCOMPARE(number(start.get_std()), row.frequency);
        QCOMPARE(duration_timecode(clip).get_nfields(), row.start + 70);
    }
    QCOMPARE(stripe_start_timecode(clip).get_nfields(), 1200u);
    QCOMPARE(stripe_start_timecode(clip).get_ssm_speed(), 3u);
    QCOMPARE(zerobased_start_timecode(clip).get_nfields(), 0u);
    QVERIFY(zerobased_start_timecode(clip).is_df());
    QCOMPARE(frame0_timecode(clip).get_nfields(), 500u);
    QCOMPARE(frame0_timecode(clip).get_ssm_speed(), 1u);
}

void TestATimecodeWire::stripe_without_a_speed_is_taken_at_1()
{
    VCTP3::ClipInfo clip;
    clip.stripe_timecode = wire(wire_1080_59_94i, 3600);
    QCOMPARE(stripe_start_timecode(clip).get_nfields(), 3600u);
    for (ATimecode const &t : {stripe_start_timecode(clip), zerobased_start_timecode(clip)})
        QCOMPARE(t.get_ssm_speed(), 1u);
}

void TestATimecodeWire::clip_without_frame0_is_zero_based()
{
    VCTP3::ClipInfo clip;
    clip.stripe_timecode = wire(wire_625_50i, 3600);
    clip.timecode_source = VCTP3::TimecodeSource::rectc;
    QVERIFY(start_timecode(clip).is_defined());
    QCOMPARE(start_timecode(clip).get_nfields(), 0u);
    QCOMPARE(number(frame0_timecode(clip).get_std()), 3);
}

void TestATimecodeWire::clip_of_an_unknown_source_has_no_start()
{
    VCTP3::ClipInfo clip;
    clip.stripe_timecode = wire(wire_625_50i, 3600);
    clip.clip_length = 70;
    for (int n : {-1, 4}) {
        clip.timecode_source = static_cast<VCTP3::TimecodeSource>(n);
        QVERIFY(start_timecode(clip).is_undefined());
        QVERIFY(duration_timecode(clip).is_undefined());
    }
}

void TestATimecodeWire::clip_with_an_undefined_stripe_is_undefined()
{
    VCTP3::ClipInfo const clip;
    QVERIFY(stripe_start_timecode(clip).is_undefined());
    QVERIFY(zerobased_start_timecode(clip).is_undefined());
    QVERIFY(frame0_timecode(clip).is_undefined());
    QVERIFY(duration_timecode(clip).is_undefined());
}

QTEST_GUILESS_MAIN(TestATimecodeWire)
#include "tst_atimecode_wire.moc"
