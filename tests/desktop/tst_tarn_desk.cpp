// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"

#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// The desk as a program: its command line, its pictures, its own server.
class TestTarnDesk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void help_tells_the_options();
    void bad_usage_is_refused_data();
    void bad_usage_is_refused();
    void a_picture_of_a_server_is_taken_without_a_display();
    void a_picture_is_taken_on_a_display();
    void a_picture_that_cannot_be_written_is_a_failure();
    void without_a_server_it_starts_one_of_its_own();
};

namespace {

/// The program, run to its end.
struct Run
{
    Run() = default;
    explicit Run(QStringList const &arguments, QString const &display = QString())
    {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (char const *name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
            environment.remove(QLatin1String(name));
        if (!display.isEmpty())
            environment.insert(QStringLiteral("DISPLAY"), display);
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(TARN_DESK_PROGRAM), arguments);
        finished = program.waitForFinished(3 * patience_ms)
            && program.exitStatus() == QProcess::NormalExit;
        code = program.exitCode();
        output = program.readAllStandardOutput();
        errors = program.readAllStandardError();
    }

    bool finished = false;
    int code = -1;
    QByteArray output;
    QByteArray errors;
};

constexpr QRgb tile_colour = qRgb(0x21, 0x26, 0x2c);
constexpr QRgb tally_red = qRgb(0xe0, 0x5d, 0x57);

int count(QImage const &picture, QRgb colour)
{
    int found = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            found += picture.pixel(x, y) == colour;
    return found;
}

/// Whether tiles cover most of the picture.
bool shows_channels(QImage const &picture)
{
    return count(picture, tile_colour) > picture.width() * picture.height() / 4;
}

/// The show gives a channel a red tally.
bool shows_tally(QImage const &picture)
{
    return shows_channels(picture) && count(picture, tally_red) > 200;
}

/// A run of the program for a picture, which has to show something some time: how long that takes
/// is up to the machine, so later ones are taken until one does.
struct PictureRun
{
    PictureRun(QStringList const &arguments, bool (*shows)(QImage const &),
        QString const &display = QString())
    {
        QString const file = folder.filePath(QStringLiteral("desk.png"));
        bool done = false;
        for (int after = 1; !done && after < 20; after *= 2) {
            run = Run(QStringList{QStringLiteral("--screenshot"), file, QStringLiteral("--after"),
                          QString::number(after)}
                    + arguments,
                display);
            ++runs;
            picture = QImage(file);
            done = !ended_well() || shows(picture);
        }
    }
    bool ended_well() const { return run.finished && run.code == 0; }

    QTemporaryDir folder;
    Run run;
    quint64 runs = 0;
    QImage picture; // of the last run
};

} // namespace

void TestTarnDesk::help_tells_the_options()
{
    Run const run({QStringLiteral("--help")});
    QCOMPARE(run.code, 0);
    for (char const *option : {"--server", "--screenshot", "--after", "--size", "--page"})
        QVERIFY2(run.output.contains(option), option);
}

void TestTarnDesk::bad_usage_is_refused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("text");
    auto const row = [](char const *name, QStringList const &arguments, char const *text) {
        QTest::newRow(name) << arguments << QByteArray(text);
    };
    QString const server = QStringLiteral("--server");
    QString const screenshot = QStringLiteral("--screenshot");
    QString const after = QStringLiteral("--after");
    QString const size = QStringLiteral("--size");
    row("unknown option", {QStringLiteral("--nonsense")}, "nonsense");
    row("a word too many", {QStringLiteral("word")}, "'word' is not expected");
    row("no server", {server, QString()}, "--server needs a value");
    row("a port", {server, QStringLiteral("127.0.0.1:8913")},
        "'127.0.0.1:8913' is not a name or an address without a port");
    row("no file", {screenshot, QString()}, "--screenshot needs a value");
    row("a time for nothing", {after, QStringLiteral("1")}, "--after is for --screenshot");
    row("no number", {screenshot, QStringLiteral("x.png"), after, QStringLiteral("soon")},
        "'soon' is no number of seconds");
    row("no time", {screenshot, QStringLiteral("x.png"), after, QStringLiteral("0")},
        "'0' is no number of seconds");
    row("no size", {size, QStringLiteral("large")}, "'large' is not a size");
    row("too small", {size, QStringLiteral("1023x576")}, "'1023x576' is not a size");
    row("unknown page", {QStringLiteral("--page"), QStringLiteral("Nowhere")},
        "'Nowhere' is not one of the pages Channels");
}

void TestTarnDesk::bad_usage_is_refused()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, text);
    Run const run(arguments);
    QVERIFY(run.finished);
    QCOMPARE(run.code, 2);
    QVERIFY2(run.errors.contains(text), run.errors.constData());
}

void TestTarnDesk::a_picture_of_a_server_is_taken_without_a_display()
{
    VeskSim server(LoopbackAddress::unique());
    PictureRun const taken({QStringLiteral("--server"), server.address().toString(),
                               QStringLiteral("--size"), QStringLiteral("1024x576")},
        shows_channels);
    QVERIFY2(taken.ended_well(), taken.run.errors.constData());
    QCOMPARE(server.counters().connections, taken.runs);
    QCOMPARE(taken.picture.size(), QSize(1024, 576));
    QVERIFY2(taken.run.output.contains("messages received"), taken.run.output.constData());
    QVERIFY(shows_channels(taken.picture));
}

void TestTarnDesk::a_picture_is_taken_on_a_display()
{
    QProcess display;
    display.start(QStringLiteral("Xvfb"),
        {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
            QStringLiteral("0"), QStringLiteral("1280x720x24"), QStringLiteral("-nolisten"),
            QStringLiteral("tcp")});
    QVERIFY2(display.waitForReadyRead(patience_ms), qPrintable(display.errorString()));
    QByteArray const number = display.readAll().trimmed();

    VeskSim server(LoopbackAddress::unique());
    PictureRun const taken({QStringLiteral("--server"), server.address().toString()},
        shows_channels, QStringLiteral(":") + QString::fromLatin1(number));
    display.terminate();
    QVERIFY(display.waitForFinished(patience_ms));
    QVERIFY2(taken.ended_well(), taken.run.errors.constData());
    QVERIFY(shows_channels(taken.picture));
}

void TestTarnDesk::a_picture_that_cannot_be_written_is_a_failure()
{
    VeskSim server(LoopbackAddress::unique());
    Run const run(
        {QStringLiteral("--server"), server.address().toString(), QStringLiteral("--screenshot"),
            QStringLiteral("/nowhere/desk.png"), QStringLiteral("--after"), QStringLiteral("0.1")});
    QVERIFY(run.finished);
    QCOMPARE(run.code, 1);
    QVERIFY(run.errors.contains("cannot write /nowhere/desk.png"));
}

void TestTarnDesk::without_a_server_it_starts_one_of_its_own()
{
    PictureRun const taken({}, shows_tally);
    QVERIFY2(taken.ended_well(), taken.run.errors.constData());
    QVERIFY(shows_tally(taken.picture));
}

QTEST_GUILESS_MAIN(TestTarnDesk)
#include "tst_tarn_desk.moc"
