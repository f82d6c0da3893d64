// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/computer_name.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/computer_name_p.h"

#include <QSysInfo>
#include <QTest>
#include <cstring>

class TestComputerName : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void is_the_host_name_in_both_forms();
    void is_read_once();
    void is_windoze_where_the_platform_cannot_tell();
    void has_at_most_1024_characters();
};

void TestComputerName::is_the_host_name_in_both_forms()
{
    QCOMPARE(VCTP3::getcomputername_qs(), QSysInfo::machineHostName());
    QCOMPARE(QString(VCTP3::getcomputername_as()), QSysInfo::machineHostName());
}

void TestComputerName::is_read_once()
{
    // The same shared text each time.
    QCOMPARE(static_cast<void const *>(VCTP3::getcomputername_qs().constData()),
        static_cast<void const *>(VCTP3::getcomputername_qs().constData()));
}

void TestComputerName::is_windoze_where_the_platform_cannot_tell()
{
    auto const fails = [](char *, std::size_t) { return -1; };
    auto const is_empty = [](char *name, std::size_t) {
        name[0] = '\0';
        return 0;
    };
    QVERIFY(VCTP3::read_computer_name(fails).equal_z("windoze"));
    QVERIFY(VCTP3::read_computer_name(is_empty).equal_z("windoze"));
}

void TestComputerName::has_at_most_1024_characters()
{
    auto const endless = [](char *name, std::size_t size) {
        std::memset(name, 'x', size);
        return 0;
    };
    QCOMPARE(VCTP3::read_computer_name(endless).length(), 1024ULL);
}

QTEST_GUILESS_MAIN(TestComputerName)
#include "tst_computer_name.moc"
