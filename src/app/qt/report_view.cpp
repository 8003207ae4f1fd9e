#include "app/qt/report_view.h"

#include <QHeaderView>
#include <QMenuBar>
#include <QShortcut>
#include <QStatusBar>
#include <QVBoxLayout>
#include <utility>

#include "editors/qt/plain_text.h"
#include "editors/qt/save_dialog.h"
#include "editors/qt/window_size.h"
#include "text/error.h"
#include "text/output_file.h"
#include "text/strings.h"

namespace tobarine {
namespace {

enum Column { kLine, kCall, kText, kHeading, kColumns };
constexpr int kKindRole = Qt::UserRole;

// Lines sort as numbers.
class Row : public QTreeWidgetItem {
 public:
  using QTreeWidgetItem::QTreeWidgetItem;

  bool operator<(const QTreeWidgetItem& other) const override {
    const int column = treeWidget()->sortColumn();
    if (column != kLine) return text(column) < other.text(column);
    return data(kLine, Qt::DisplayRole).toULongLong() <
           other.data(kLine, Qt::DisplayRole).toULongLong();
  }
};

QString heading_of(FindingKind kind) {
  return shown_line(finding_heading(kind));
}

}  // namespace

ReportView::ReportView(const ConversionReport& report, const std::filesystem::path& input,
                       ShowLine show_line)
    : report_(report),
      input_(input),
      show_line_(std::move(show_line)),
      kinds_(new QComboBox),
      wanted_(new QLineEdit),
      advice_(new QLabel),
      tree_(new QTreeWidget) {
  setObjectName("frmReport");
  setWindowTitle(shown_line(path_text(input.filename())) + " - 変換の報告");
  kinds_->setObjectName("cmbKinds");
  kinds_->setAccessibleName("お知らせの種類");
  kinds_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  wanted_->setObjectName("txtFind");
  wanted_->setAccessibleName("探す文字");
  wanted_->setPlaceholderText("コールや内容で絞り込み");
  wanted_->setClearButtonEnabled(true);
  tree_->setObjectName("treeReport");
  tree_->setAccessibleName("変換の報告");
  add_rows();
  auto* const notes =
      new QLabel(shown_lines(report_.stopped_by.value_or("") + (report_.stopped_by ? "\n" : "") +
                             file_notes(report_, Front::kWindow))
                     .trimmed());
  notes->setObjectName("lblNotes");
  notes->setTextFormat(Qt::PlainText);
  notes->setWordWrap(true);
  notes->setVisible(!notes->text().isEmpty());
  advice_->setObjectName("lblAdvice");
  advice_->setTextFormat(Qt::PlainText);
  advice_->setWordWrap(true);
  auto* const choice = new QHBoxLayout;
  choice->addWidget(kinds_, 2);
  choice->addWidget(wanted_, 1);
  auto* const content = new QWidget;
  auto* const layout = new QVBoxLayout(content);
  layout->setContentsMargins(6, 4, 6, 0);
  layout->addWidget(notes);
  layout->addLayout(choice);
  layout->addWidget(advice_);
  layout->addWidget(tree_, 1);
  setCentralWidget(content);
  add_menus();
  connect(kinds_, &QComboBox::currentIndexChanged, this, [this] { filter(); });
  connect(wanted_, &QLineEdit::textChanged, this, [this] { filter(); });
  connect(tree_, &QTreeWidget::currentItemChanged, this, [this] { show_advice(); });
  connect(tree_, &QTreeWidget::itemActivated, this, [this](auto* item) { choose(*item); });
  connect(tree_, &QTreeWidget::itemClicked, this, [this](auto* item) { choose(*item); });
  filter();
  resize_within_screen(*this, {760, 460});
}

void ReportView::add_rows() {
  tree_->setHeaderLabels({report_.in_records ? "レコード" : "行", "コール", "内容", "お知らせ"});
  tree_->setRootIsDecorated(false);
  tree_->setUniformRowHeights(true);
  tree_->setAllColumnsShowFocus(true);
  const FindingLog& findings = report_.findings;
  kinds_->addItem(QString("すべてのお知らせ: %1 件").arg(findings.about_contacts()), -1);
  QList<QTreeWidgetItem*> rows;
  for (int k = 0; k < static_cast<int>(FindingKind::kCount); ++k) {
    const auto kind = static_cast<FindingKind>(k);
    const qsizetype before = rows.size();
    for (const Finding& finding : findings.kept()) {
      if (finding.kind != kind || finding.line == 0) continue;
      auto* const row = new Row;
      row->setData(kLine, Qt::DisplayRole, static_cast<qulonglong>(finding.line));
      row->setText(kCall, shown_line(finding.call));
      row->setText(kText, shown_line(finding.text));
      row->setToolTip(kText, plain_tip(row->text(kText)));
      row->setText(kHeading, heading_of(kind));
      row->setData(0, kKindRole, k);
      rows << row;
    }
    if (rows.size() == before) continue;
    QString item = heading_of(kind) + QString(": %1 件").arg(findings.count(kind));
    if (findings.count(kind) > FindingLog::kKept) {
      item += QString(" (初めの %1 件を表示)").arg(FindingLog::kKept);
    }
    kinds_->addItem(item, k);
  }
  tree_->addTopLevelItems(rows);
  for (int column = 0; column < kHeading; ++column) tree_->resizeColumnToContents(column);
  constexpr int kWidest = 260;
  tree_->setColumnWidth(kText, std::min(tree_->columnWidth(kText), kWidest));
  tree_->header()->setSortIndicator(-1, Qt::AscendingOrder);  // as the run told them
  tree_->setSortingEnabled(true);
}

void ReportView::add_menus() {
  QAction* const back = menuBar()->addAction("[ 戻る ]", this, &QWidget::close);
  back->setObjectName("mnuBack");
  QAction* const save = menuBar()->addAction("[ 保存… ]", this, [this] { ask_and_save(); });
  save->setObjectName("mnuSave");
  save->setShortcut(QKeySequence::Save);
  QAction* const find = menuBar()->addAction("[ 検索 ]", QKeySequence::Find, wanted_,
                                             qOverload<>(&QWidget::setFocus));
  find->setObjectName("mnuFind");
  const auto* const escape = new QShortcut(Qt::Key_Escape, this);
  connect(escape, &QShortcut::activated, this, [this] {
    if (wanted_->text().isEmpty()) {
      close();
    } else {
      wanted_->clear();
    }
  });
}

void ReportView::filter() {
  const int kind = kinds_->currentData().toInt();
  const QString wanted = wanted_->text();
  int shown = 0;
  for (int i = 0; i < tree_->topLevelItemCount(); ++i) {
    QTreeWidgetItem& row = *tree_->topLevelItem(i);
    bool fits = wanted.isEmpty();
    for (int column = 0; column < kColumns && !fits; ++column) {
      fits = row.text(column).contains(wanted, Qt::CaseInsensitive);
    }
    fits = fits && (kind < 0 || row.data(0, kKindRole).toInt() == kind);
    row.setHidden(!fits);
    shown += fits ? 1 : 0;
  }
  statusBar()->showMessage(shown == 0 && !wanted.isEmpty() ? QString("見つかりません")
                                                           : QString("%1 件を表示").arg(shown));
  show_advice();
}

// Of the kind that is filtered for, else of the current row's.
void ReportView::show_advice() {
  int kind = kinds_->currentData().toInt();
  if (const auto* const row = tree_->currentItem(); kind < 0 && row != nullptr) {
    kind = row->data(0, kKindRole).toInt();
  }
  if (kind < 0) {
    advice_->setText(report_.in_records ? "行を選ぶと、できることが出ます。"
                                        : "行を押すと、入力のその行と、できることが出ます。");
    return;
  }
  const auto advice = finding_advice(static_cast<FindingKind>(kind), Front::kWindow);
  advice_->setText(advice.empty() ? QString() : "すること: " + shown_line(advice));
}

void ReportView::choose(const QTreeWidgetItem& item) {
  const auto line = item.data(kLine, Qt::DisplayRole).toULongLong();
  if (!report_.in_records) show_line_(input_, static_cast<std::size_t>(line));
}

void ReportView::save(const std::filesystem::path& file) const {
  const bool table = equal_ignoring_case(path_text(file.extension()), ".csv");
  std::string text = table ? report_csv(report_) : report_text(report_, Front::kWindow);
  replace_all(text, "\n", "\r\n");
  // UTF-8 with its mark: editors and spreadsheets know it, and every character has its place.
  replace_file(file, "\xEF\xBB\xBF" + text);
}

void ReportView::ask_and_save() {
  std::filesystem::path proposed = input_;
  proposed.replace_filename(input_.stem());
  proposed += path_from_text("-報告.txt");
  const auto file =
      choose_new_file(this, "報告を保存する", proposed, "テキスト (*.txt);;CSV (*.csv)");
  if (!file) return;
  try {
    save(*file);
    statusBar()->showMessage("保存しました: " + shown_line(path_text(*file)));
  } catch (const Error& error) {
    message_box(this, QMessageBox::Critical, "Tobarine", error.what())->exec();
  }
}

}  // namespace tobarine
