// SPDX-License-Identifier: Apache-2.0
#pragma once

class QWidget;

/// What assistive programs are told of a readout: its text as one value, without the glyphs that
/// make it up.
/// Thread: the main thread.
namespace AccessibleReadout {

/// Lets the toolkit know; once is enough, more does nothing.
void install();
/// Tells those that listen.
void value_changed(QWidget *readout);

} // namespace AccessibleReadout
