// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/waveform_export.h"

#include <QDir>
#include <QMessageBox>

#include "timeseries/waveform_text.h"
#include "ui/byte_text.h"
#include "ui/file_dialogs.h"
#include "ui/qt_path.h"

namespace orvane {

QString AskAndSaveCsv(const WaveformView& view, const std::vector<std::size_t>& traces,
                      QWidget* parent) {
  CFileDialog dialog(QStringLiteral("Save Visible Waveform"),
                     "CSV (*.csv)|*.csv|All Files (*.*)|*.*||", QString(), parent);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(QStringLiteral("csv"));
  dialog.selectFile(TextFromPath(view.File().Path().stem()) +
                    QStringLiteral("-%1.csv").arg(view.Number()));
  if (!dialog.ExecRemembering(QStringLiteral("Folders/Waveform texts"))) {
    return {};
  }
  const QString path = dialog.Chosen();
  const Result<> saved = SaveVisibleCsv(view, traces, PathFromText(path));
  if (!saved) {
    QMessageBox::warning(parent, QStringLiteral("Orvane"), TextFromBytes(saved.Message()));
    return QStringLiteral("Not saved: ") + TextFromBytes(saved.Message());
  }
  return QStringLiteral("Saved as %1").arg(QDir::toNativeSeparators(path));
}

}  // namespace orvane
