// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/widgets/atimecode_entry.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/timecode_text_p.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QTimer>
#include <algorithm>

using Corvane::ATimecode;

namespace {

constexpr int digit_count = 8;

QString digits_of(QString const &text)
{
    QString digits;
    for (QChar const c : text) {
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
            digits += c;
    }
    return digits;
}

/// Whether the separators of \a text, which are all alike, tell of a second field.
bool tells_f2(QString const &text)
{
    QString separators;
    std::copy_if(text.begin(), text.end(), std::back_inserter(separators),
        [](QChar c) { return QStringLiteral(",.:;").contains(c); });
    if (separators.isEmpty() || separators.count(separators[0]) != separators.size())
        return false;
    return separators[0] == QLatin1Char(':') || separators[0] == QLatin1Char(';');
}

} // namespace

ATimecodeEntry::ATimecodeEntry(QWidget *parent)
    : QLineEdit(parent)
{
    setAccessibleName(tr("Timecode"));
    setAccessibleDescription(tr("Hours, minutes, seconds and frames, two digits each"));
    connect(this, &QLineEdit::textChanged, this, &ATimecodeEntry::fix_entry);
}

ATimecodeEntry::~ATimecodeEntry() = default;

ATimecode ATimecodeEntry::timecode() const
{
    QString const shown = text();
    if (digits_of(shown).isEmpty())
        return {};
    ATimecode result = fromString(shown, rate, flag);
    // Reading counts the second field of a frame also where there is none.
    if (timecode_fields_per_frame(rate) == 1 && tells_f2(shown))
        result -= 1u;
    return result;
}

void ATimecodeEntry::set_timecode(ATimecode const &shown)
{
    if (shown.is_defined()) {
        rate = shown.get_std();
        flag = shown.get_df();
    }
    setText(text_of(shown));
}

QString ATimecodeEntry::text_of(ATimecode const &timecode)
{
    return timecode.is_defined() ? QString(timecode.get24().toString(4)) : QString();
}

void ATimecodeEntry::set_frequency(Corvane::VideoFrequency chosen)
{
    rate = chosen;
    fix_entry(text());
}

void ATimecodeEntry::set_dfflag(Corvane::DropframeFlag chosen)
{
    if (!isValid(chosen))
        return;
    flag = chosen;
    fix_entry(text());
}

void ATimecodeEntry::set_nfields(unsigned int nfields)
{
    set_timecode(ATimecode(rate, flag, nfields, 1));
}

void ATimecodeEntry::keyPressEvent(QKeyEvent *event)
{
    bool const plain
        = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    bool const separator
        = event->text() == QLatin1String(",") || event->text() == QLatin1String(";");
    if (isReadOnly() || !plain)
        QLineEdit::keyPressEvent(event);
    else if (separator)
        key_separator();
    else if (event->key() == Qt::Key_Backspace)
        key_backspace();
    else
        QLineEdit::keyPressEvent(event);
}

void ATimecodeEntry::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    // Later, as the press of the mouse that brings the focus still places the cursor.
    if (auto_highlight)
        QTimer::singleShot(0, this, &QLineEdit::selectAll);
}

void ATimecodeEntry::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (df_alterable && hasDropframe(rate) && !isReadOnly()) {
        menu->addSeparator();
        QAction *dropframe = menu->addAction(tr("Drop frame"));
        dropframe->setCheckable(true);
        dropframe->setChecked(is_df());
        connect(dropframe, &QAction::toggled, this, [this](bool on) {
            setModified(true);
            on ? set_dfflag_df() : set_dfflag_ndf();
        });
    }
    menu->popup(event->globalPos());
}

void ATimecodeEntry::fix_entry(QString const &typed)
{
    if (guard)
        return;
    QString const fixed = in_form(typed);
    if (fixed == typed)
        return;
    // Digits come in from the right, so it is the distance from there that stays.
    qsizetype const to_end = typed.size() - cursorPosition();
    bool const modified = isModified();
    guard = true;
    setText(fixed);
    guard = false;
    setModified(modified);
    setCursorPosition(static_cast<int>(std::max(qsizetype{0}, fixed.size() - to_end)));
    Q_EMIT changed(timecode());
}

void ATimecodeEntry::key_separator()
{
    if (hasSelectedText())
        del();
    else
        insert(QStringLiteral("00"));
}

void ATimecodeEntry::key_backspace()
{
    fix_entry(text());
    int const at = cursorPosition();
    if (!hasSelectedText() && (at == 3 || at == 6 || at == 9))
        setCursorPosition(at - 1);
    backspace();
}

QString ATimecodeEntry::in_form(QString const &typed) const
{
    QString text = digits_of(typed);
    if (text.isEmpty())
        return text;
    text = text.right(digit_count).rightJustified(digit_count, QLatin1Char('0'));
    bool const f2 = timecode_fields_per_frame(rate) != 1 && tells_f2(typed);
    QChar const separator = QLatin1Char(TimecodeText::separator(is_df(), f2));
    for (int at : {6, 4, 2})
        text.insert(at, separator);
    return text;
}

bool ATimecodeEntry::is_df() const
{
    return dropframeByVideoFrequency(rate, flag) == Corvane::DropframeFlag::df;
}
