// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_model.h"
#include "ATarnLib/glint/video_standard_model.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"
#include "tests/support/linked_client.h"
#include "tests/support/patience.h"

#include <QSignalSpy>
#include <QTest>

using Corvane::VideoFrequency;
using Corvane::VideoResolution;
using Corvane::VideoStandard;

/// The standard that a server is configured to run in.
class TestVideoStandardModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_and_writes_each_standard_data();
    void reads_and_writes_each_standard();
    void another_text_is_no_standard();
    void is_invalid_before_the_item_has_arrived();
    void sets_nothing_before_the_server_has_told_what_it_allows();
    void sets_no_invalid_standard();
    void sets_by_frequency_and_resolution();
    void a_standard_that_is_set_is_an_edit_until_it_is_committed();
    void knows_what_the_server_allows();
    void drops_allowed_texts_that_are_no_standard();
    void tells_a_change_in_four_forms_the_standard_first();
    void a_slot_that_sets_again_is_told_of_last();
    void the_local_form_is_that_of_the_local_model();
    void the_local_model_may_go_before_the_local_form();
    void a_missing_model_or_hub_is_an_assertion();
};

namespace {

VCTP3::ConfigurationItem item(AString const &value, std::vector<AString> const &allowed)
{
    VCTP3::ConfigurationItem result;
    result.configuration_item_name = "VideoStandard"_a;
    result.configuration_item_effective_value = value;
    for (AString const &text : allowed)
        result.configuration_item_allowed_values.push_back(text);
    return result;
}

/// A model of items that are fed by hand.
struct Bench
{
    VCTP3::APIQt api;
    CFModel *cf = CFModel::create(false, &api);
    CFItemModel *item = cf->get_item(QStringLiteral("VideoStandard"));
    VideoStandardModel model{cf};
};

} // namespace

void TestVideoStandardModel::reads_and_writes_each_standard_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value");
    static char const *const texts[]
        = {"4K_60p", "4K_59_94p", "4K_50p", "4K_30p", "4K_29_97p", "4K_25p", "4K_24p", "4K_23_98p",
            "1080_60p", "1080_59_94p", "1080_50p", "1080_30p", "1080_29_97p", "1080_25p",
            "1080_24p", "1080_23_98p", "1080_23_98psf", "1080_59_94i", "1080_50i", "1080_48i",
            "1080_47_95i", "720_60p", "720_59_94p", "720_50p", "625_50i", "525_59_94i"};
    for (int value = 1; value <= 26; ++value)
        QTest::newRow(texts[value - 1]) << QString::fromLatin1(texts[value - 1]) << value;
}

void TestVideoStandardModel::reads_and_writes_each_standard()
{
    QFETCH(QString, text);
    QFETCH(int, value);
    auto const standard = static_cast<VideoStandard>(value);
    Bench b;
    b.item->config(item(AString(text), {AString(text)}));
    QVERIFY(b.model.get() == standard);
    QVERIFY(b.model.get_frequency() == toVideoFrequency(standard));
    QVERIFY(b.model.get_resolution() == toVideoResolution(standard));
    b.item->config(item("other"_a, {AString(text)}));
    b.model.set(standard);
    QCOMPARE(b.item->get(), text);
}

void TestVideoStandardModel::another_text_is_no_standard()
{
    Bench b;
    for (AString const &text : {"1080_60i"_a, "1080_60P"_a, ""_a, "1080i 60Hz"_a}) {
        b.item->config(item(text, {}));
        QVERIFY(b.model.get() == VideoStandard::invalid);
    }
}

void TestVideoStandardModel::is_invalid_before_the_item_has_arrived()
{
    Bench b;
    QVERIFY(b.model.get() == VideoStandard::invalid);
    QVERIFY(b.model.get_frequency() == VideoFrequency::invalid);
    QVERIFY(b.model.get_resolution() == VideoResolution::invalid);
    QVERIFY(b.model.allowed_values().isEmpty());
}

void TestVideoStandardModel::sets_nothing_before_the_server_has_told_what_it_allows()
{
    Bench b;
    b.model.set(VideoStandard::v1080p_60);
    QVERIFY(!b.item->have_changes());
    b.item->config(item("1080_50i"_a, {}));
    b.model.set(VideoStandard::v1080p_60);
    QVERIFY(!b.item->have_changes());
    // What is allowed is not asked.
    b.item->config(item("1080_50i"_a, {"1080_50i"_a}));
    b.model.set(VideoStandard::v1080p_60);
    QCOMPARE(b.item->get(), QStringLiteral("1080_60p"));
}

void TestVideoStandardModel::sets_no_invalid_standard()
{
    Bench b;
    b.item->config(item("1080_50i"_a, {"1080_50i"_a}));
    b.model.set(VideoStandard::invalid);
    b.model.set(static_cast<VideoStandard>(27));
    b.model.set(VideoFrequency::v24, VideoResolution::v525i);
    b.model.set(VideoFrequency::invalid, VideoResolution::invalid);
    QVERIFY(!b.item->have_changes());
}

void TestVideoStandardModel::sets_by_frequency_and_resolution()
{
    Bench b;
    b.item->config(item("1080_50i"_a, {"1080_50i"_a}));
    b.model.set(VideoFrequency::v59_94, VideoResolution::v720p);
    QCOMPARE(b.item->get(), QStringLiteral("720_59_94p"));
    QVERIFY(b.model.get() == VideoStandard::v720p_59_94);
}

void TestVideoStandardModel::a_standard_that_is_set_is_an_edit_until_it_is_committed()
{
    LinkedClient<> c;
    CFModel *cf = CFModel::create(false, &c.api);
    VideoStandardModel model(cf);
    QVERIFY(c.connect());
    QTRY_VERIFY(model.get() == VideoStandard::v1080i_59_94);
    model.set(VideoStandard::v720p_50);
    QVERIFY(cf->have_changes());
    cf->commit_changes();
    QVERIFY(c.sync());
    VeskSetting const setting = c.server.setting("VideoStandard"_a).value();
    QCOMPARE(setting.saved, "720_50p"_a);
    QVERIFY(cf->need_reboot());
    c.server.restart(VeskState::keep);
    QTRY_VERIFY(!c.api.is_connected());
    QVERIFY(c.connect());
    QTRY_VERIFY(!cf->need_reboot());
    QVERIFY(model.get() == VideoStandard::v720p_50);
}

void TestVideoStandardModel::knows_what_the_server_allows()
{
    Bench b;
    b.item->config(item("1080_50i"_a, {"1080_50i"_a, "720_60p"_a}));
    QVERIFY(b.model.allowed_values()
        == (QList<VideoStandard>{VideoStandard::v1080i_50, VideoStandard::v720p_60}));
    QVERIFY(b.model.allowed(VideoStandard::v720p_60));
    QVERIFY(!b.model.allowed(VideoStandard::v720p_50));
    QVERIFY(b.model.allowed(VideoFrequency::v50));
    QVERIFY(!b.model.allowed(VideoFrequency::v59_94));
    QVERIFY(b.model.allowed(VideoResolution::v720p));
    QVERIFY(!b.model.allowed(VideoResolution::v4K));
    QVERIFY(b.model.allowed(VideoFrequency::v60, VideoResolution::v720p));
    QVERIFY(!b.model.allowed(VideoFrequency::v50, VideoResolution::v720p));
}

void TestVideoStandardModel::drops_allowed_texts_that_are_no_standard()
{
    Bench b;
    b.item->config(item("1080_50i"_a, {"1080_60i"_a, "1080_50i"_a, "auto"_a}));
    QVERIFY(b.model.allowed_values() == QList<VideoStandard>{VideoStandard::v1080i_50});
    QVERIFY(!b.model.allowed(VideoStandard::invalid));
    QVERIFY(!b.model.allowed(VideoFrequency::invalid));
}

void TestVideoStandardModel::tells_a_change_in_four_forms_the_standard_first()
{
    Bench b;
    QList<QList<int>> told;
    connect(&b.model, qOverload<VideoStandard>(&VideoStandardModel::changed), this,
        [&](VideoStandard s) {
            told.append({1, int(s)});
        });
    connect(&b.model, qOverload<VideoFrequency>(&VideoStandardModel::changed), this,
        [&](VideoFrequency f) {
            told.append({2, int(f)});
        });
    connect(&b.model, qOverload<VideoResolution>(&VideoStandardModel::changed), this,
        [&](VideoResolution r) {
            told.append({3, int(r)});
        });
    connect(&b.model, qOverload<VideoFrequency, VideoResolution>(&VideoStandardModel::changed),
        this, [&](VideoFrequency f, VideoResolution r) {
            told.append({4, int(f), int(r)});
        });
    b.item->set(QStringLiteral("720_60p"));
    int const frequency = int(VideoFrequency::v60);
    int const resolution = int(VideoResolution::v720p);
    QCOMPARE(told,
        (QList<QList<int>>{{1, int(VideoStandard::v720p_60)}, {2, frequency}, {3, resolution},
            {4, frequency, resolution}}));
}

void TestVideoStandardModel::the_local_form_is_that_of_the_local_model()
{
    VideoStandardModel model(this);
    QCOMPARE(model.parent(), this);
    CFModel::get_item_localhost(QStringLiteral("VideoStandard"))->set(QStringLiteral("625_50i"));
    QVERIFY(model.get() == VideoStandard::v625i_50);
}

void TestVideoStandardModel::a_slot_that_sets_again_is_told_of_last()
{
    Bench b;
    connect(b.item, qOverload<>(&CFItemModel::changed), this,
        [&] { b.item->set(QStringLiteral("720_50p")); });
    VideoStandard told = VideoStandard::invalid;
    connect(&b.model, qOverload<VideoStandard>(&VideoStandardModel::changed), this,
        [&](VideoStandard standard) { told = standard; });
    b.item->set(QStringLiteral("720_60p"));
    QVERIFY(b.model.get() == VideoStandard::v720p_50);
    QVERIFY(told == VideoStandard::v720p_50);
}

void TestVideoStandardModel::the_local_model_may_go_before_the_local_form()
{
    auto hub = std::make_unique<VCTP3::APIQt>();
    CFItemModel *item = CFModel::create(true, hub.get())->get_item(QStringLiteral("VideoStandard"));
    VideoStandardModel model(this);
    item->config(::item("625_50i"_a, {"625_50i"_a}));
    QVERIFY(model.get() == VideoStandard::v625i_50);
    hub.reset();
    QVERIFY(model.get() == VideoStandard::invalid);
    QVERIFY(model.allowed_values().isEmpty());
    model.set(VideoStandard::v625i_50);
    QVERIFY(model.get() == VideoStandard::invalid);
}

void TestVideoStandardModel::a_missing_model_or_hub_is_an_assertion()
{
    AssertLog asserts;
    VideoStandardModel model(static_cast<CFModel *>(nullptr));
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("model != nullptr")});
    model.set(VideoStandard::v625i_50);
    QVERIFY(model.get() == VideoStandard::invalid);
    QVERIFY(model.allowed_values().isEmpty());
}

QTEST_GUILESS_MAIN(TestVideoStandardModel)
#include "tst_video_standard_model.moc"
