// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/json_reader.h"
#include "tools/tarnctl/text_form.h"

#include <QTest>

using TarnCtl::JsonValue;

class TestTextForm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_scalar_is_quoted_where_it_could_be_mistaken_data();
    void a_scalar_is_quoted_where_it_could_be_mistaken();
    void any_value_fits_on_a_line_data();
    void any_value_fits_on_a_line();
    void a_report_is_one_line();
    void a_reply_without_records_is_one_line();
    void a_reply_with_records_is_an_aligned_block();
    void a_table_aligns_its_columns();
};

namespace {

JsonValue json(char const *text)
{
    JsonValue value;
    QString error;
    if (!TarnCtl::read_json(QString::fromUtf8(text), &value, &error))
        qFatal("%s", qPrintable(error));
    return value;
}

} // namespace

void TestTextForm::a_scalar_is_quoted_where_it_could_be_mistaken_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    auto const row = [](char const *text, char const *shown) {
        QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(shown);
    };
    row("Demo/ü-1", "Demo/ü-1");
    row("", "\"\"");
    row("two words", "\"two words\"");
    row("a=b", "\"a=b\"");
    row("[x]", "\"[x]\"");
    row("\x1b[31m", "\"\\u001b[31m\"");
    row("a\nb", "\"a\\nb\"");
    row("say \"hi\"", "\"say \\\"hi\\\"\"");
}

void TestTextForm::a_scalar_is_quoted_where_it_could_be_mistaken()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QCOMPARE(TarnCtl::plain_text(JsonValue::text(text)), shown);
}

void TestTextForm::any_value_fits_on_a_line_data()
{
    QTest::addColumn<QString>("shown");
    QTest::newRow("null") << QStringLiteral("-");
    QTest::newRow("true") << QStringLiteral("true");
    QTest::newRow("-7") << QStringLiteral("-7");
    QTest::newRow("\"two words\"") << QStringLiteral("\"two words\"");
    QTest::newRow("[]") << QStringLiteral("[]");
    QTest::newRow("[1,[2,null]]") << QStringLiteral("[1 [2 -]]");
    QTest::newRow("{\"a\":1,\"b\":{\"c\":\"\"}}") << QStringLiteral("{a=1 b={c=\"\"}}");
}

void TestTextForm::any_value_fits_on_a_line()
{
    QFETCH(QString, shown);
    QCOMPARE(TarnCtl::value_text(json(QTest::currentDataTag())), shown);
}

void TestTextForm::a_report_is_one_line()
{
    QCOMPARE(TarnCtl::message_line(json(
                 R"({"report":"channel_timecode","Channel":"A","ClipPosition":5,)"
                 R"("DisplayTimecode":{"Valid":true,"FieldNumber":-1},"KeyList":["a","b c"]})")),
        QStringLiteral("channel_timecode                Channel=A ClipPosition=5 "
                       "DisplayTimecode={Valid=true FieldNumber=-1} KeyList=[a \"b c\"]"));
    QCOMPARE(TarnCtl::message_line(json(R"({"report":"config_changed"})")),
        QStringLiteral("config_changed"));
}

void TestTextForm::a_reply_without_records_is_one_line()
{
    QCOMPARE(TarnCtl::message_block(json(R"({"reply":"ok"})")), QStringLiteral("ok"));
    QCOMPARE(TarnCtl::message_block(json(R"({"reply":"clipexists","ClipID":"x","Exists":true})")),
        QStringLiteral("clipexists  ClipID=x Exists=true"));
}

void TestTextForm::a_reply_with_records_is_an_aligned_block()
{
    QCOMPARE(TarnCtl::message_block(json(R"({"reply":"clipinfo","ClipInfo":{"ClipID":"x y",)"
                                         R"("TrackInfoVector":[{"TrackType":"video"},)"
                                         R"({"TrackType":"audio","TrimStart":2}],"KeyList":[],)"
                                         R"("StripeTimecode":{"Valid":false}}})")),
        QStringLiteral("clipinfo\n"
                       "  ClipInfo\n"
                       "    ClipID           \"x y\"\n"
                       "    TrackInfoVector  {TrackType=video}\n"
                       "                     {TrackType=audio TrimStart=2}\n"
                       "    KeyList          []\n"
                       "    StripeTimecode\n"
                       "      Valid  false"));
}

void TestTextForm::a_table_aligns_its_columns()
{
    TarnCtl::TextTable table;
    QVERIFY(table.is_empty());
    table.add({QStringLiteral("Name"), QStringLiteral("Value")});
    table.add({QStringLiteral("a longer one"), QString()});
    table.add({QStringLiteral("b"), QStringLiteral("2"), QStringLiteral("more")});
    QCOMPARE(table.text(),
        QStringLiteral("Name          Value\n"
                       "a longer one\n"
                       "b             2      more"));
}

QTEST_GUILESS_MAIN(TestTextForm)
#include "tst_text_form.moc"
