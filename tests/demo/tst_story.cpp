// SPDX-License-Identifier: Apache-2.0
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// The story of the demo, as a person starts it: it claims only what it has seen.
class TestStory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ends_with_0_when_each_step_was_seen();
    void ends_with_1_when_a_step_was_not_seen_data();
    void ends_with_1_when_a_step_was_not_seen();
};

namespace {

struct Run
{
    explicit Run(QString const &simulator)
    {
        QProcess program;
        program.start(QStringLiteral(TARN_STORY_PROGRAM),
            {QStringLiteral("--simulator"), simulator, QStringLiteral("--address"),
                LoopbackAddress::unique().toString()});
        if (program.waitForFinished(4 * patience_ms)
            && program.exitStatus() == QProcess::NormalExit)
            code = program.exitCode();
        lines = QString::fromUtf8(program.readAllStandardOutput()).split(u'\n');
    }

    /// How often that line stands there, apart from blanks around it.
    int count(QString const &text) const
    {
        int found = 0;
        for (QString const &line : lines)
            found += line.trimmed() == text;
        return found;
    }
    /// What the table at the end says of it.
    QString told(QString const &name) const
    {
        for (QString const &line : lines)
            if (line.startsWith(QStringLiteral("  ") + name))
                return line.mid(2 + name.size()).trimmed();
        return {};
    }

    int code = -1;
    QStringList lines;
};

} // namespace

void TestStory::ends_with_0_when_each_step_was_seen()
{
    Run const run(QStringLiteral(VESK_SIM_PROGRAM));
    QVERIFY2(run.code == 0, qPrintable(run.lines.join(u'\n')));
    QCOMPARE(run.count(QStringLiteral("seen")), 11);
    QCOMPARE(run.told(QStringLiteral("steps")), QStringLiteral("11 of 11"));
    QCOMPARE(run.told(QStringLiteral("commands in flight that failed, each once")),
        QStringLiteral("50"));
    QVERIFY(run.told(QStringLiteral("round trip, median")).endsWith(QStringLiteral(" us")));
    QVERIFY(run.told(QStringLiteral("reports per second, four channels")).toInt() > 0);
    QVERIFY(run.told(QStringLiteral("time to come back once the server listens"))
                .endsWith(QStringLiteral(" ms")));
}

void TestStory::ends_with_1_when_a_step_was_not_seen_data()
{
    QTest::addColumn<QString>("simulator");
    QTest::addColumn<int>("seen");
    QTest::addColumn<QString>("not_seen");
    QTest::newRow("no such program")
        << QString() << 0 << QStringLiteral("Start a simulated server");
    QTest::newRow("one that ends")
        << QStringLiteral("exit 3") << 0 << QStringLiteral("Start a simulated server");
    QTest::newRow("one without clips")
        << QStringLiteral("exec " VESK_SIM_PROGRAM " --address \"$2\" --empty") << 3
        << QStringLiteral("List what it holds");
}

void TestStory::ends_with_1_when_a_step_was_not_seen()
{
    QFETCH(QString, simulator);
    QFETCH(int, seen);
    QFETCH(QString, not_seen);
    QTemporaryDir folder;
    QFile script(folder.filePath(QStringLiteral("simulator")));
    if (!simulator.isEmpty()) {
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\n" + simulator.toUtf8() + '\n');
        script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        script.close();
    }
    Run const run(script.fileName());
    QVERIFY2(run.code == 1, qPrintable(run.lines.join(u'\n')));
    QCOMPARE(run.count(QStringLiteral("seen")), seen);
    QCOMPARE(run.count(QStringLiteral("NOT SEEN")), 1);
    QCOMPARE(run.count(QStringLiteral("left out")), 10 - seen);
    QCOMPARE(run.told(QStringLiteral("steps")), QStringLiteral("%1 of 11").arg(seen));
    QCOMPARE(run.told(QStringLiteral("not seen")), not_seen);
}

QTEST_GUILESS_MAIN(TestStory)
#include "tst_story.moc"
