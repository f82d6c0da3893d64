// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/glint_output_monitor.h"
#include "tools/tarnctl/monitor_signals.h"

#include <QMetaMethod>
#include <QSet>
#include <QTest>

using TarnCtl::ChannelSignal;
using TarnCtl::JsonValue;

/// The signals of monitors by name, and what they carry as JSON.
class TestMonitorSignals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void every_signal_of_a_channel_has_a_row();
    void every_signal_of_an_output_but_timecodes_has_a_row();
    void repeats_the_value_that_is_held_data();
    void repeats_the_value_that_is_held();
    void an_output_carries_the_same_data();
    void an_output_carries_the_same();
    void reads_names_data();
    void reads_names();
};

namespace {

QSet<QString> signals_of(QMetaObject const &meta)
{
    QSet<QString> names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QString const name = QString::fromLatin1(meta.method(i).name());
        if (meta.method(i).methodType() == QMetaMethod::Signal
            && name.startsWith(QLatin1String("report_")))
            names.insert(name.mid(7));
    }
    return names;
}

template <typename Signals> QSet<QString> names_of(Signals const &table)
{
    QSet<QString> names;
    for (auto const &signal : table)
        names.insert(QLatin1String(signal.name));
    return names;
}

template <typename Signals> auto const &signal_named(Signals const &table, QString const &name)
{
    for (auto const &signal : table)
        if (name == QLatin1String(signal.name))
            return signal;
    qFatal("no signal %s", qPrintable(name));
}

/// What comes out of a monitor that nobody has told anything.
template <typename Signals, typename Monitor>
QByteArray repeated(Signals const &table, Monitor *monitor, QString const &name)
{
    auto const &signal = signal_named(table, name);
    QObject context;
    QByteArrayList heard;
    signal.listen(
        monitor, &context, [&heard](JsonValue const &value) { heard << value.to_json(); });
    // The monitor takes note of its listener, and emits the value, in the event loop.
    QCoreApplication::sendPostedEvents();
    (monitor->*signal.repeat)();
    return heard.join(' ');
}

void add_defaults()
{
    QTest::addColumn<QByteArray>("json");
    auto const row = [](char const *name, QByteArray const &json) {
        QTest::newRow(name) << json + ' ' + json;
    };
    row("status", "\"idle\"");
    row("clipid", "\"\"");
    row("speed", "\"0X\"");
    row("clip_position", "0");
    row("display_timecode", "\"(invalid)\"");
    row("input_timecode", "\"(invalid)\"");
    row("playback_mode", "null");
}

} // namespace

void TestMonitorSignals::every_signal_of_a_channel_has_a_row()
{
    QCOMPARE(
        names_of(TarnCtl::channel_signals()), signals_of(GlintChannelMonitor::staticMetaObject));
    QCOMPARE(int(TarnCtl::channel_signals().size()), 18);
    QCOMPARE(TarnCtl::signal_names().size(), 18);
}

void TestMonitorSignals::every_signal_of_an_output_but_timecodes_has_a_row()
{
    QSet<QString> expected = signals_of(GlintOutputMonitor::staticMetaObject);
    QVERIFY(expected.remove(QStringLiteral("timecodes")));
    QCOMPARE(names_of(TarnCtl::output_signals()), expected);
    QCOMPARE(int(TarnCtl::output_signals().size()), 9);
}

void TestMonitorSignals::repeats_the_value_that_is_held_data()
{
    add_defaults();
    QByteArray const timecodes
        = "{\"clip_position\":0,\"display\":\"(invalid)\",\"input\":\"(invalid)\"}";
    QTest::newRow("timecodes") << timecodes + ' ' + timecodes;
    QTest::newRow("peak") << QByteArray("[] []");
    QTest::newRow("peak_hold") << QByteArray("[] []");
    QTest::newRow("aux_peak") << QByteArray("[] []");
    QTest::newRow("aux_peak_hold") << QByteArray("[] []");
    QTest::newRow("aux_status") << QByteArray("\"idle\" \"idle\"");
    QTest::newRow("aux_clipid") << QByteArray("\"\" \"\"");
    QTest::newRow("aux_speed") << QByteArray("\"0X\" \"0X\"");
    QTest::newRow("aux_position") << QByteArray("0 0");
    QTest::newRow("information") << QByteArray(R"({"ClipID":""} {"ClipID":""})");
    QTest::newRow("aux_information") << QByteArray(R"({"ClipID":""} {"ClipID":""})");
}

void TestMonitorSignals::repeats_the_value_that_is_held()
{
    QFETCH(QByteArray, json);
    Glint hub(false);
    QCOMPARE(repeated(TarnCtl::channel_signals(), hub.get_channel_monitor(0),
                 QLatin1String(QTest::currentDataTag())),
        json);
}

void TestMonitorSignals::an_output_carries_the_same_data()
{
    add_defaults();
    QTest::newRow("aux_position") << QByteArray("0 0");
    QTest::newRow("information") << QByteArray(R"({"ClipID":""} {"ClipID":""})");
}

void TestMonitorSignals::an_output_carries_the_same()
{
    QFETCH(QByteArray, json);
    Glint hub(false);
    QCOMPARE(repeated(TarnCtl::output_signals(), hub.get_output_monitor(0),
                 QLatin1String(QTest::currentDataTag())),
        json);
}

void TestMonitorSignals::reads_names_data()
{
    QTest::addColumn<QString>("names");
    QTest::newRow("status") << QStringLiteral("status");
    QTest::newRow("speed,status") << QStringLiteral("speed status");
    QTest::newRow("peak,peak_hold,peak") << QStringLiteral("peak peak_hold");
    QTest::newRow("") << QString();
    QTest::newRow("status,") << QString();
    QTest::newRow("Status") << QString();
    QTest::newRow("report_status") << QString();
}

void TestMonitorSignals::reads_names()
{
    QFETCH(QString, names);
    std::vector<ChannelSignal const *> wanted;
    QString error;
    QString const text = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(TarnCtl::read_signals(text, &wanted, &error), !names.isEmpty());
    QStringList read;
    for (ChannelSignal const *signal : wanted)
        read << QLatin1String(signal->name);
    QCOMPARE(read.join(u' '), names);
    if (names.isEmpty())
        QCOMPARE(error,
            QStringLiteral("no signal '%1': expected one of %2")
                .arg(text.section(u',', -1), TarnCtl::signal_names().join(QStringLiteral(", "))));
}

QTEST_GUILESS_MAIN(TestMonitorSignals)
#include "tst_monitor_signals.moc"
