// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/ltc_model.h"
#include "sim/vesk/reports.h"
#include "tests/glint/hub_bench.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"
#include "tests/support/patience.h"

#include <QSignalSpy>
#include <QTest>

using Corvane::ATimecode;

/// The timecode at the timecode input.
class TestLTCModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void is_undefined_without_a_connection();
    void registers_with_each_connection();
    void a_connection_that_is_up_already_is_used_at_once();
    void shows_each_field();
    void tells_no_change_of_an_equal_timecode();
    void another_flag_or_standard_is_a_change();
    void a_report_without_a_timecode_is_undefined();
    void forgets_the_timecode_with_the_connection();
    void a_missing_model_or_hub_is_an_assertion();
};

namespace {

void report(VeskSim *server, ATimecode const &timecode)
{
    server->report(VCTP3::ReportType::ltc_input,
        VeskReports::ltc_timecode(timecode.to_vctp3(Corvane::VideoResolution::v1080i)));
}

ATimecode at(Corvane::DropframeFlag flag, unsigned int fields)
{
    return ATimecode(Corvane::VideoFrequency::v59_94, flag, fields, 1);
}

constexpr auto df = Corvane::DropframeFlag::df;
constexpr auto ndf = Corvane::DropframeFlag::ndf;

} // namespace

void TestLTCModel::is_undefined_without_a_connection()
{
    HubBench b;
    LTCModel ltc(b.hub.get());
    QVERIFY(ltc.get().is_undefined());
    QVERIFY(b.log.commands().isEmpty());
}

void TestLTCModel::registers_with_each_connection()
{
    HubBench b;
    LTCModel ltc(b.hub.get());
    QString const wish = QStringLiteral("report_register ltc_input");
    QVERIFY(b.connect());
    QCOMPARE(b.log.commands(wish).size(), 1);
    QVERIFY(b.reconnect());
    QCOMPARE(b.log.commands(wish).size(), 2);
}

void TestLTCModel::a_connection_that_is_up_already_is_used_at_once()
{
    HubBench b;
    QVERIFY(b.connect());
    LTCModel ltc(b.hub.get());
    QTRY_VERIFY(ltc.get().is_defined());
}

void TestLTCModel::shows_each_field()
{
    HubBench b;
    LTCModel ltc(b.hub.get());
    QSignalSpy changed(&ltc, &LTCModel::changed);
    QVERIFY(b.connect());
    QTRY_COMPARE(ltc.get().toString(4), "10,00,00,00"_a);
    QCOMPARE(changed.count(), 1);
    b.server.advance(1);
    QTRY_COMPARE(ltc.get().toString(4), "10;00;00;00"_a);
    b.server.advance(3);
    QTRY_COMPARE(ltc.get().toString(4), "10,00,00,02"_a);
}

void TestLTCModel::tells_no_change_of_an_equal_timecode()
{
    HubBench b;
    LTCModel ltc(b.hub.get());
    QVERIFY(b.connect());
    report(&b.server, at(df, 100));
    QTRY_COMPARE(ltc.get(), at(df, 100));
    QSignalSpy reports(b.hub.get(), &Glint::report_ltc_timecode);
    QSignalSpy changed(&ltc, &LTCModel::changed);
    report(&b.server, at(df, 100));
    QTRY_COMPARE(reports.count(), 1);
    QCOMPARE(changed.count(), 0);
}

void TestLTCModel::another_flag_or_standard_is_a_change()
{
    HubBench b;
    LTCModel ltc(b.hub.get());
    QVERIFY(b.connect());
    report(&b.server, at(df, 100));
    QTRY_VERIFY(ltc.get() == at(df, 100));
    QVERIFY(ltc.get().is_df());
    report(&b.server, at(ndf, 100));
    QTRY_VERIFY(ltc.get().is_ndf());
    ATimecode const european(Corvane::VideoFrequency::v50, ndf, 100, 1);
    QCOMPARE(european, at(ndf, 100));
    report(&b.server, european);
    QTRY_VERIFY(ltc.get().get_std() == european.get_std());
}

void TestLTCModel::a_report_without_a_timecode_is_undefined()
{
    HubBench b;
    LTCModel ltc(b.hub.get());
    QVERIFY(b.connect());
    QTRY_VERIFY(ltc.get().is_defined());
    b.server.report(VCTP3::ReportType::ltc_input, VeskReports::ltc_timecode(VCTP3::Timecode()));
    QTRY_VERIFY(ltc.get().is_undefined());
}

void TestLTCModel::forgets_the_timecode_with_the_connection()
{
    HubBench b;
    LTCModel ltc(b.hub.get());
    QVERIFY(b.connect());
    QTRY_VERIFY(ltc.get().is_defined());
    QSignalSpy changed(&ltc, &LTCModel::changed);
    b.server.stop();
    QTRY_VERIFY(!b.hub->is_connected());
    QVERIFY(ltc.get().is_undefined());
    QCOMPARE(changed.count(), 1);
    // What was still being decoded comes behind the end.
    Q_EMIT b.hub->report_ltc_timecode(at(df, 100).to_vctp3(Corvane::VideoResolution::v1080i));
    QVERIFY(ltc.get().is_undefined());
    b.server.restart(VeskState::keep);
    QTRY_VERIFY(ltc.get().is_defined());
    QCOMPARE(changed.count(), 2);
}

void TestLTCModel::a_missing_model_or_hub_is_an_assertion()
{
    AssertLog asserts;
    LTCModel ltc(nullptr);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("hub != nullptr")});
    QVERIFY(ltc.get().is_undefined());
}

QTEST_GUILESS_MAIN(TestLTCModel)
#include "tst_ltc_model.moc"
