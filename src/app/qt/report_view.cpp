#include "app/qt/report_view.h"

#include <QHeaderView>
#include <QMenuBar>
#include <QTreeWidget>
#include <utility>

#include "editors/qt/window_size.h"

namespace tobarine {
namespace {

QString qstring(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

}  // namespace

ReportView::ReportView(const ConversionReport& report, std::function<void(std::size_t)> show_line) {
  setObjectName("frmReport");
  setWindowTitle("変換の報告");
  auto* const tree = new QTreeWidget(this);
  tree->setObjectName("treeReport");
  tree->setAccessibleName("変換の報告");
  tree->setHeaderLabels({report.in_records ? "レコード" : "行", "コール", "内容"});
  tree->setUniformRowHeights(true);
  const auto add_heading = [tree](const QString& text) {
    auto* const heading = new QTreeWidgetItem(tree, {text});
    heading->setFirstColumnSpanned(true);
    return heading;
  };
  if (report.stopped_by) add_heading(qstring(*report.stopped_by));
  for (const Finding& finding : report.findings.kept()) {
    if (finding.line != 0) continue;
    add_heading(qstring(finding_heading(finding.kind)) +
                (finding.text.empty() ? "" : ": " + qstring(finding.text)));
  }
  for (int k = 0; k < static_cast<int>(FindingKind::kCount); ++k) {
    const auto kind = static_cast<FindingKind>(k);
    QTreeWidgetItem* heading = nullptr;
    for (const Finding& finding : report.findings.kept()) {
      if (finding.kind != kind || finding.line == 0) continue;
      if (heading == nullptr) {
        heading = add_heading(qstring(finding_heading(kind)) +
                              QString(": %1 件").arg(report.findings.count(kind)));
      }
      auto* const item = new QTreeWidgetItem(
          heading, {QString::number(finding.line), qstring(finding.call), qstring(finding.text)});
      item->setData(0, Qt::UserRole, static_cast<qulonglong>(finding.line));
    }
    if (heading != nullptr && report.findings.count(kind) > FindingLog::kKept) {
      new QTreeWidgetItem(
          heading,
          {"…", "",
           QString("以下 %1 件は省略").arg(report.findings.count(kind) - FindingLog::kKept)});
    }
  }
  tree->expandAll();
  for (int column = 0; column < 2; ++column) tree->resizeColumnToContents(column);
  const bool lines_can_be_shown = !report.in_records;
  const auto choose = [lines_can_be_shown,
                       show_line = std::move(show_line)](QTreeWidgetItem* item) {
    const auto line = item->data(0, Qt::UserRole).toULongLong();
    if (lines_can_be_shown && line > 0) show_line(static_cast<std::size_t>(line));
  };
  connect(tree, &QTreeWidget::itemActivated, this, choose);
  connect(tree, &QTreeWidget::itemClicked, this, choose);
  setCentralWidget(tree);
  QAction* const back = menuBar()->addAction("[ 戻る ]", this, &QWidget::close);
  back->setObjectName("mnuBack");
  back->setShortcut(Qt::Key_Escape);
  resize_within_screen(*this, {760, 460});
}

}  // namespace tobarine
