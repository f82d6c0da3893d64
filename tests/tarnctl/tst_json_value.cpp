// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/json_reader.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using TarnCtl::JsonValue;

class TestJsonValue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keys_stay_in_the_order_they_were_added();
    void texts_are_escaped_data();
    void texts_are_escaped();
    void every_text_gives_json_that_a_strict_reader_takes_back();
    void a_lone_surrogate_still_gives_valid_utf8();
    void reads_values_data();
    void reads_values();
    void refuses_what_is_no_json_data();
    void refuses_what_is_no_json();
    void numbers_keep_their_digits();
    void reads_32_levels_and_no_more();
};

void TestJsonValue::keys_stay_in_the_order_they_were_added()
{
    JsonValue object = JsonValue::object();
    object.add("b", JsonValue::number(QStringLiteral("1")));
    object.add("a", JsonValue::boolean(true));
    JsonValue array = JsonValue::array();
    array.append(JsonValue());
    array.append(JsonValue::object());
    object.add("c", array);
    object.set(QStringLiteral("a"), JsonValue::boolean(false));
    QCOMPARE(object.to_json(), QByteArray(R"({"b":1,"a":false,"c":[null,{}]})"));
}

void TestJsonValue::texts_are_escaped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("empty") << QString() << QByteArray(R"("")");
    QTest::newRow("quote and backslash") << QStringLiteral("a\"b\\c") << QByteArray(R"("a\"b\\c")");
    QTest::newRow("line ends") << QStringLiteral("a\r\n\tb") << QByteArray(R"("a\r\n\tb")");
    QTest::newRow("control") << QString(QChar(1)) + QChar(0x1b) << QByteArray(R"("\u0001\u001b")");
    QTest::newRow("zero") << QString(QChar(0)) << QByteArray(R"("\u0000")");
    QTest::newRow("second control range")
        << QString(QChar(0x7f)) + QChar(0x9b) << QByteArray(R"("\u007f\u009b")");
    QTest::newRow("above it") << QString(QChar(0xa0)) << QByteArray("\"\xc2\xa0\"");
    QTest::newRow("utf-8") << QStringLiteral("ü€") << QByteArray("\"ü€\"");
    QTest::newRow("beyond 16 bits") << QStringLiteral("𝄞") << QByteArray("\"𝄞\"");
}

void TestJsonValue::texts_are_escaped()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, json);
    QCOMPARE(JsonValue::text(text).to_json(), json);
}

void TestJsonValue::every_text_gives_json_that_a_strict_reader_takes_back()
{
    QString all;
    for (char32_t code = 1; code < 0x3000; ++code) // our reader refuses 0, as no message holds it
        all += QChar(code);
    JsonValue object = JsonValue::object();
    object.add(all, JsonValue::text(all));
    QJsonParseError error;
    QJsonDocument const read = QJsonDocument::fromJson(object.to_json(), &error);
    QCOMPARE(error.error, QJsonParseError::NoError);
    QCOMPARE(read.object().value(all).toString(), all);

    JsonValue own;
    QString reason;
    QVERIFY2(
        TarnCtl::read_json(QString::fromUtf8(object.to_json()), &own, &reason), qPrintable(reason));
    QCOMPARE(own.scalar_of(all), all);
}

void TestJsonValue::a_lone_surrogate_still_gives_valid_utf8()
{
    QByteArray const json = JsonValue::text(QString(QChar(0xd800))).to_json();
    QJsonParseError error;
    QJsonDocument::fromJson('[' + json + ']', &error);
    QCOMPARE(error.error, QJsonParseError::NoError);
}

void TestJsonValue::reads_values_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("json");
    auto const row = [](char const *text, char const *json) {
        QTest::newRow(text) << QString::fromUtf8(text) << QByteArray(json);
    };
    row(" null ", "null");
    row("true", "true");
    row("\t[ false , 1 ]\r\n", "[false,1]");
    row("-0.5e+10", "-0.5e+10");
    row("0", "0");
    row("[]", "[]");
    row("{ }", "{}");
    row(R"({"b" : 1, "a":{"c":[]}})", R"({"b":1,"a":{"c":[]}})");
    row(R"("\"\\\/\b\f\n\r\t")", R"("\"\\/\u0008\u000c\n\r\t")");
    row(R"("\u00e4\ud834\udd1e")", "\"ä𝄞\"");
    row(R"("ü")", "\"ü\"");
}

void TestJsonValue::reads_values()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, json);
    JsonValue value;
    QString error;
    QVERIFY2(TarnCtl::read_json(text, &value, &error), qPrintable(error));
    QCOMPARE(value.to_json(), json);
}

void TestJsonValue::refuses_what_is_no_json_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error");
    auto const row = [](char const *text, char const *error) {
        QTest::newRow(text) << QString::fromUtf8(text)
                            << QStringLiteral("no JSON: expected ") + QString::fromUtf8(error);
    };
    row("", "a value (texts stand in double quotes) at character 1");
    row("A", "a value (texts stand in double quotes) at character 1");
    row("'A'", "a value (texts stand in double quotes) at character 1");
    row("01", "nothing more at character 2");
    row("+1", "a value (texts stand in double quotes) at character 1");
    row("1 2", "nothing more at character 3");
    row("[1", "',' or ']' at character 3");
    row("[1,]", "a value (texts stand in double quotes) at character 4");
    row("{\"a\"}", "':' at character 5");
    row("{\"a\":1", "',' or '}' at character 7");
    row("{a:1}", "a name in double quotes at character 2");
    row("{\"a\":1,}", "a name in double quotes at character 8");
    row("{\"a\":1,\"a\":2}", "each name once at character 11");
    row("\"a", "'\"' at character 3");
    row("\"\n\"", "no control character at character 2");
    row("\"\\x\"", "one of \"\\/bfnrtu behind the backslash at character 3");
    row("\"\\u12\"", "four hexadecimal digits at character 3");
    row("\"\\u 0e9\"", "four hexadecimal digits at character 3");
    row("\"\\u0x1f\"", "four hexadecimal digits at character 3");
    row("\"\\u0000\"", "a character that a message can hold at character 7");
    row("\"\\udc00\"", "a character that a message can hold at character 7");
    row("\"\\ud800b\"", "the second half of a surrogate pair at character 7");
    row("\"\\ud800\\u0041\"", "the second half of a surrogate pair at character 13");
    row("\"\\", "one of \"\\/bfnrtu behind the backslash at character 3");
}

void TestJsonValue::refuses_what_is_no_json()
{
    QFETCH(QString, text);
    QFETCH(QString, error);
    JsonValue value = JsonValue::boolean(true);
    QString reason;
    QVERIFY(!TarnCtl::read_json(text, &value, &reason));
    QCOMPARE(reason, error);
    QVERIFY(value.truth());
}

void TestJsonValue::numbers_keep_their_digits()
{
    JsonValue value;
    QString error;
    QVERIFY(TarnCtl::read_json(QStringLiteral("18446744073709551615"), &value, &error));
    QCOMPARE(value.scalar(), QStringLiteral("18446744073709551615"));
}

void TestJsonValue::reads_32_levels_and_no_more()
{
    JsonValue value;
    QString error;
    QVERIFY(TarnCtl::read_json(QString(32, u'[') + QString(32, u']'), &value, &error));
    QVERIFY(!TarnCtl::read_json(QString(33, u'[') + QString(33, u']'), &value, &error));
    QVERIFY(!TarnCtl::read_json(QString(100000, u'['), &value, &error));
}

QTEST_GUILESS_MAIN(TestJsonValue)
#include "tst_json_value.moc"
