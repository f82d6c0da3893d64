// SPDX-License-Identifier: Apache-2.0
#include "tests/support/patience.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// What `./dev demo` runs, with stand-ins for the programs that it starts.
class TestDemoScript : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void opens_the_desktop_where_there_is_a_display_data();
    void opens_the_desktop_where_there_is_a_display();
    void tells_the_story_and_takes_pictures_elsewhere();
    void fails_with_the_story();
    void fails_with_a_picture_and_says_why();

private:
    /// A program of the build, as the lines of a shell script behind one that notes how it is run.
    void make_program(char const *name, QByteArray const &body);
    /// Runs the script to its end; the exit code.
    int run(char const *display_variable = nullptr);
    /// The programs that were run, with their arguments.
    QStringList started() const;

    std::unique_ptr<QTemporaryDir> folder;
    QByteArray errors;
};

void TestDemoScript::init()
{
    folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(folder->path()).mkpath(QStringLiteral("dev/bin")));
    make_program("tarn-story", "");
    // The picture is the word behind --screenshot, the sixth.
    make_program("tarn-desk", "[ -z \"$6\" ] || : >\"$6\"\n");
}

void TestDemoScript::cleanup()
{
    folder.reset();
}

void TestDemoScript::make_program(char const *name, QByteArray const &body)
{
    QFile::remove(folder->filePath(QStringLiteral("dev/bin/") + QLatin1String(name)));
    QFile program(folder->filePath(QStringLiteral("dev/bin/") + QLatin1String(name)));
    QVERIFY(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\necho \"${0##*/} $*\" >>\"${0%/*}/started\"\n" + body);
    program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

int TestDemoScript::run(char const *display_variable)
{
    QProcess script;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (char const *name : {"DISPLAY", "WAYLAND_DISPLAY"})
        environment.remove(QLatin1String(name));
    if (display_variable)
        environment.insert(QLatin1String(display_variable), QStringLiteral(":7"));
    script.setProcessEnvironment(environment);
    script.start(QStringLiteral(DEMO_SCRIPT),
        {folder->filePath(QStringLiteral("dev")), QStringLiteral("--more")});
    if (!script.waitForFinished(patience_ms) || script.exitStatus() != QProcess::NormalExit)
        return -1;
    errors = script.readAllStandardError();
    return script.exitCode();
}

QStringList TestDemoScript::started() const
{
    QFile file(folder->filePath(QStringLiteral("dev/bin/started")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    lines.replaceInStrings(folder->path(), QStringLiteral("FOLDER"));
    return lines;
}

void TestDemoScript::opens_the_desktop_where_there_is_a_display_data()
{
    QTest::addColumn<QByteArray>("variable");
    QTest::newRow("X11") << QByteArray("DISPLAY");
    QTest::newRow("Wayland") << QByteArray("WAYLAND_DISPLAY");
}

void TestDemoScript::opens_the_desktop_where_there_is_a_display()
{
    QFETCH(QByteArray, variable);
    QCOMPARE(run(variable.constData()), 0);
    QCOMPARE(started(), QStringList(QStringLiteral("tarn-desk --more")));
}

void TestDemoScript::tells_the_story_and_takes_pictures_elsewhere()
{
    QCOMPARE(run(), 0);
    QStringList expected(QStringLiteral("tarn-story --simulator FOLDER/dev/bin/vesk-sim --more"));
    QStringList pictures;
    for (char const *size : {"1280x720", "1920x1080"}) {
        for (char const *page : {"Channels", "Outputs", "Server", "Configuration"}) {
            QString const picture
                = QStringLiteral("desk-%1-%2.png")
                      .arg(QString::fromLatin1(page).toLower(), QLatin1String(size));
            expected << QStringLiteral(
                "tarn-desk --page %1 --size %2 --screenshot FOLDER/demo/%3 --after 3")
                            .arg(QLatin1String(page), QLatin1String(size), picture);
            pictures << picture;
        }
    }
    QCOMPARE(started(), expected);
    pictures.sort();
    QCOMPARE(QDir(folder->filePath(QStringLiteral("demo"))).entryList(QDir::Files, QDir::Name),
        pictures);
}

void TestDemoScript::fails_with_the_story()
{
    make_program("tarn-story", "exit 1\n");
    QCOMPARE(run(), 1);
    QCOMPARE(started().size(), 1);
}

void TestDemoScript::fails_with_a_picture_and_says_why()
{
    make_program("tarn-desk", "echo no picture >&2\nexit 2\n");
    QCOMPARE(run(), 1);
    QCOMPARE(started().size(), 2);
    QCOMPARE(errors, QByteArray("no picture\n"));
}

QTEST_GUILESS_MAIN(TestDemoScript)
#include "tst_demo_script.moc"
