// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/atimecode.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QLineEdit>

/// A line in which a timecode is typed as on a calculator: digits come in at the cursor and move
/// those to its left on, so that there always are four groups of two. Separators are those of
/// `Corvane::ATimecode::toString` and tell dropframe and field; what is typed anew is of the first
/// field.
///
/// "," and ";" type "00", which closes the group at hand; where text is selected they delete it.
/// An entry without a digit is empty, and its timecode undefined.
///
/// What a user will meet:
/// - The text is read by `Corvane::fromString`, to which a frame is two fields at every frequency:
///   from 30 Hz down, where a field is a frame, twice the frames that were typed.
/// - `changed` comes when something typed had to be brought into the form of a timecode. A digit
///   that is typed over a selected one leaves it in that form, and only the signals of the line
///   tell of it.
/// - Days do not show.
///
/// Thread: the main thread.
class TARN_EXPORT ATimecodeEntry : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(bool auto_highlight READ get_auto_highlight WRITE set_auto_highlight)
    Q_PROPERTY(bool df_alterable READ isDfAlterable WRITE allowDfAlteration)

public:
    /// Empty, at 59.94 Hz with dropframe.
    explicit ATimecodeEntry(QWidget *parent = nullptr);
    ~ATimecodeEntry() override;

    /// Of the text, at the frequency and in the dropframe state of the entry. Undefined while it is
    /// empty, and for an invalid frequency.
    Corvane::ATimecode timecode() const;
    /// Takes frequency and flag too. Undefined empties the entry and leaves them.
    void set_timecode(Corvane::ATimecode const &shown);
    /// The text that it gives \a timecode.
    static QString text_of(Corvane::ATimecode const &timecode);

    Corvane::VideoFrequency frequency() const { return rate; }
    /// The digits stay.
    void set_frequency(Corvane::VideoFrequency chosen);
    /// The flag that was set; it counts only at a frequency that has dropframe.
    Corvane::DropframeFlag dfflag() const { return flag; }
    /// The digits stay. Without effect for an invalid flag.
    void set_dfflag(Corvane::DropframeFlag chosen);
    void set_dfflag_df() { set_dfflag(Corvane::DropframeFlag::df); }
    void set_dfflag_ndf() { set_dfflag(Corvane::DropframeFlag::ndf); }
    /// The timecode of that many fields.
    void set_nfields(unsigned int nfields);

    /// Whether the context menu lets the user change the dropframe state, at a frequency that has
    /// dropframe. Not unless set here.
    void allowDfAlteration(bool allow) { df_alterable = allow; }
    bool isDfAlterable() const { return df_alterable; }
    /// Whether all is selected when the entry gets the focus. Not unless set here.
    void set_auto_highlight(bool on) { auto_highlight = on; }
    bool get_auto_highlight() const { return auto_highlight; }

Q_SIGNALS:
    /// What the user typed was brought into the form of a timecode, or its separators changed.
    void changed(Corvane::ATimecode const &timecode);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void fix_entry(QString const &typed);
    void key_separator();
    void key_backspace();
    QString in_form(QString const &typed) const;
    bool is_df() const;

    Corvane::VideoFrequency rate = Corvane::VideoFrequency::v59_94;
    Corvane::DropframeFlag flag = Corvane::DropframeFlag::df;
    bool auto_highlight = false;
    bool df_alterable = false;
    bool guard = false; // while fix_entry puts in what it made
};
