// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/tally_model.h"
#include "ATarnLib/glint/us_model.h"
#include "sim/vesk/vesk_world.h"
#include "tests/glint/hub_bench.h"
#include "tests/support/assert_log.h"
#include "tests/support/patience.h"

#include <QSignalSpy>
#include <QTest>

/// The tally light of a channel.
class TestTallyModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shows_the_word_of_the_dictionary_data();
    void shows_the_word_of_the_dictionary();
    void tells_a_change_of_the_state_alone();
    void reads_what_is_known_already();
    void each_channel_has_a_key_of_its_own();
    void shows_the_demo_event();
    void a_missing_model_or_hub_is_an_assertion();
};

namespace {

void set_tally(VeskSim *server, char const *key, QString const &word)
{
    server->with_world(
        [&](VeskWorld &world) { world.dictionary.set(AString::l1(key), AString(word)); });
}

} // namespace

void TestTallyModel::shows_the_word_of_the_dictionary_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<int>("state");
    QTest::newRow("nothing") << QString() << 0;
    QTest::newRow("offline") << QStringLiteral("offline") << 1;
    QTest::newRow("yellow") << QStringLiteral("yellow") << 2;
    QTest::newRow("red") << QStringLiteral("red") << 3;
    QTest::newRow("green") << QStringLiteral("green") << 4;
    QTest::newRow("another case") << QStringLiteral("Red") << 0;
    QTest::newRow("a number") << QStringLiteral("3") << 0;
    QTest::newRow("another word") << QStringLiteral("blue") << 0;
}

void TestTallyModel::shows_the_word_of_the_dictionary()
{
    QFETCH(QString, word);
    HubBench b;
    USModel *us = USModel::create(false, b.hub.get());
    TallyModel tally(us, 3);
    QSignalSpy changed(&tally, &TallyModel::changed);
    QCOMPARE(tally.get_state(), TallyModel::none);
    // A state of its own first, so that each word has something to change.
    set_tally(&b.server, "Tally3", QStringLiteral("green"));
    QVERIFY(b.connect());
    QTRY_COMPARE(tally.get_state(), TallyModel::green);
    set_tally(&b.server, "Tally3", word);
    QVERIFY(b.sync());
    QTEST(int(tally.get_state()), "state");
    QCOMPARE(changed.count(), tally.get_state() == TallyModel::green ? 1 : 2);
}

void TestTallyModel::tells_a_change_of_the_state_alone()
{
    HubBench b;
    USModel *us = USModel::create(false, b.hub.get());
    TallyModel tally(us, 0);
    QVERIFY(b.connect());
    QSignalSpy changed(&tally, &TallyModel::changed);
    QSignalSpy words(us->get_item(QStringLiteral("Tally0")), &USItemModel::changed);
    set_tally(&b.server, "Tally0", QStringLiteral("blue"));
    set_tally(&b.server, "Tally0", QStringLiteral("pink"));
    QVERIFY(b.sync());
    QCOMPARE(words.count(), 2);
    QCOMPARE(changed.count(), 0);
    set_tally(&b.server, "Tally0", QStringLiteral("red"));
    QTRY_COMPARE(changed.count(), 1);
}

void TestTallyModel::reads_what_is_known_already()
{
    HubBench b;
    USModel *us = USModel::create(false, b.hub.get());
    us->get_item(QStringLiteral("Tally39"))->set(QStringLiteral("yellow"));
    TallyModel tally(us, 39);
    QCOMPARE(tally.get_state(), TallyModel::yellow);
}

void TestTallyModel::each_channel_has_a_key_of_its_own()
{
    HubBench b;
    USModel *us = USModel::create(false, b.hub.get());
    TallyModel first(us, 1);
    TallyModel eleventh(us, 11);
    us->get_item(QStringLiteral("Tally11"))->set(QStringLiteral("red"));
    QCOMPARE(first.get_state(), TallyModel::none);
    QCOMPARE(eleventh.get_state(), TallyModel::red);
}

void TestTallyModel::shows_the_demo_event()
{
    VeskSimOptions options;
    options.demo = true;
    HubBench b(options);
    USModel *us = USModel::create(false, b.hub.get());
    TallyModel first(us, 0);
    TallyModel second(us, 1);
    QVERIFY(b.connect());
    QTRY_COMPARE(first.get_state(), TallyModel::green);
    QTRY_COMPARE(second.get_state(), TallyModel::red);
}

void TestTallyModel::a_missing_model_or_hub_is_an_assertion()
{
    AssertLog asserts;
    TallyModel tally(nullptr, 0);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("model != nullptr")});
    QCOMPARE(tally.get_state(), TallyModel::none);
}

QTEST_GUILESS_MAIN(TestTallyModel)
#include "tst_tally_model.moc"
