// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/video_standard_model.h"

#include "ATarnLib/config/cf_model.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <algorithm>
#include <iterator>

using Corvane::VideoFrequency;
using Corvane::VideoResolution;
using Corvane::VideoStandard;

namespace {

struct StandardText
{
    VideoStandard standard;
    char const *text;
};

using S = VideoStandard;

/// The texts of the configuration item. The first match counts; two rows stand here twice, as they
/// always have.
constexpr StandardText standard_texts[] = {
    {S::v4K_60, "4K_60p"},
    {S::v4K_59_94, "4K_59_94p"},
    {S::v4K_50, "4K_50p"},
    {S::v4K_30, "4K_30p"},
    {S::v4K_29_97, "4K_29_97p"},
    {S::v4K_25, "4K_25p"},
    {S::v4K_24, "4K_24p"},
    {S::v4K_23_98, "4K_23_98p"},
    {S::v1080p_59_94, "1080_59_94p"},
    {S::v1080p_50, "1080_50p"},
    {S::v1080p_60, "1080_60p"},
    {S::v1080p_59_94, "1080_59_94p"},
    {S::v1080p_50, "1080_50p"},
    {S::v1080p_30, "1080_30p"},
    {S::v1080p_29_97, "1080_29_97p"},
    {S::v1080p_25, "1080_25p"},
    {S::v1080p_24, "1080_24p"},
    {S::v1080p_23_98, "1080_23_98p"},
    {S::v1080psf_47_95, "1080_23_98psf"},
    {S::v1080i_59_94, "1080_59_94i"},
    {S::v1080i_50, "1080_50i"},
    {S::v1080i_48, "1080_48i"},
    {S::v1080i_47_95, "1080_47_95i"},
    {S::v720p_60, "720_60p"},
    {S::v720p_59_94, "720_59_94p"},
    {S::v720p_50, "720_50p"},
    {S::v625i_50, "625_50i"},
    {S::v525i_59_94, "525_59_94i"},
};
static_assert(std::size(standard_texts) == 28);

VideoStandard to_standard(QString const &text)
{
    for (StandardText const &row : standard_texts)
        if (text == QLatin1String(row.text))
            return row.standard;
    return VideoStandard::invalid;
}

/// Null for an invalid standard.
char const *to_text(VideoStandard standard)
{
    for (StandardText const &row : standard_texts)
        if (row.standard == standard)
            return row.text;
    return nullptr;
}

template <typename Like> bool any_of(QList<VideoStandard> const &standards, Like like)
{
    return std::any_of(standards.begin(), standards.end(), like);
}

} // namespace

VideoStandardModel::VideoStandardModel(CFModel *model, QObject *parent)
    : QObject(parent)
    , item(model ? model->get_item(QStringLiteral("VideoStandard")) : nullptr)
{
    if (A_ASSERT(model != nullptr))
        connect(item, qOverload<QString const &>(&CFItemModel::changed), this,
            &VideoStandardModel::model_changed);
}

VideoStandardModel::VideoStandardModel(QObject *parent)
    : VideoStandardModel(CFModel::localhost(), parent)
{
}

VideoStandard VideoStandardModel::get() const
{
    return item ? to_standard(item->get()) : VideoStandard::invalid;
}

VideoFrequency VideoStandardModel::get_frequency() const
{
    return toVideoFrequency(get());
}

VideoResolution VideoStandardModel::get_resolution() const
{
    return toVideoResolution(get());
}

void VideoStandardModel::set(VideoStandard standard)
{
    char const *const text = to_text(standard);
    if (text && item && !item->allowed_values().isEmpty())
        item->set(QString::fromLatin1(text));
}

void VideoStandardModel::set(VideoFrequency frequency, VideoResolution resolution)
{
    set(toVideoStandard(resolution, frequency));
}

bool VideoStandardModel::allowed(VideoStandard standard) const
{
    return allowed_values().contains(standard);
}

bool VideoStandardModel::allowed(VideoFrequency frequency) const
{
    return any_of(
        allowed_values(), [=](VideoStandard s) { return toVideoFrequency(s) == frequency; });
}

bool VideoStandardModel::allowed(VideoResolution resolution) const
{
    return any_of(
        allowed_values(), [=](VideoStandard s) { return toVideoResolution(s) == resolution; });
}

bool VideoStandardModel::allowed(VideoFrequency frequency, VideoResolution resolution) const
{
    return any_of(allowed_values(), [=](VideoStandard s) {
        return toVideoFrequency(s) == frequency && toVideoResolution(s) == resolution;
    });
}

QList<VideoStandard> VideoStandardModel::allowed_values() const
{
    QList<VideoStandard> result;
    if (!item)
        return result;
    for (QString const &text : item->allowed_values()) {
        VideoStandard const standard = to_standard(text);
        if (isValid(standard))
            result.append(standard);
    }
    return result;
}

// A slot that sets the item again must not be followed by what held before.
void VideoStandardModel::model_changed()
{
    Q_EMIT changed(get());
    Q_EMIT changed(get_frequency());
    Q_EMIT changed(get_resolution());
    Q_EMIT changed(get_frequency(), get_resolution());
}
