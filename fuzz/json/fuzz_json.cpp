// SPDX-License-Identifier: Apache-2.0
// JSON as a person types it. What is read is written as a text that reads as the same again, and
// the toolkit's reader, which takes more but for numbers beyond its own, takes each text that ours
// takes.
#include "fuzz/expect.h"
#include "tools/tarnctl/json_reader.h"

#include <QJsonDocument>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size);

using namespace TarnCtl;

int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    QByteArray const bytes(reinterpret_cast<char const *>(data), static_cast<qsizetype>(size));
    QString const text = QString::fromUtf8(bytes);
    JsonValue value;
    QString error;
    if (!read_json(text, &value, &error)) {
        FUZZ_EXPECT(!error.isEmpty() && value.kind() == JsonValue::Kind::Null);
        return 0;
    }
    FUZZ_EXPECT(error.isEmpty());
    QByteArray const written = value.to_json();
    JsonValue again;
    FUZZ_EXPECT(read_json(QString::fromUtf8(written), &again, &error));
    FUZZ_EXPECT(again.to_json() == written);

    QJsonParseError of_toolkit;
    QJsonDocument::fromJson('[' + text.toUtf8() + ']', &of_toolkit);
    FUZZ_EXPECT(of_toolkit.error == QJsonParseError::NoError
        || of_toolkit.error == QJsonParseError::IllegalNumber);
    return 0;
}
