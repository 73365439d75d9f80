#include "ClassViewDialog.h"

#include "NeedsHelpModel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

ClassViewDialog::ClassViewDialog(std::vector<OverviewRow> rows, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmClassView"));
    setWindowTitle(QStringLiteral("Who Needs Help"));
    setFont(QFont(QStringLiteral("Arial"), 10));

    auto *model = new NeedsHelpModel(std::move(rows), this);
    m_sorted = new QSortFilterProxyModel(this);
    m_sorted->setSourceModel(model);
    m_sorted->setSortRole(Qt::UserRole);

    m_table = new QTableView(this);
    m_table->setObjectName(QStringLiteral("grdClass"));
    m_table->setAccessibleName(
        QStringLiteral("Who needs help: a row for each student and subject"));
    m_table->setModel(m_sorted);
    m_table->setSortingEnabled(true);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setTabKeyNavigation(false);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setStretchLastSection(true);

    // The headers sort with the mouse; these do it from the keyboard.
    m_sortBy = new QComboBox(this);
    m_sortBy->setObjectName(QStringLiteral("cmbSortBy"));
    for (int column = 0; column < NeedsHelpModel::ColumnCount; ++column)
        m_sortBy->addItem(model->headerData(column, Qt::Horizontal).toString());
    m_sortBy->setCurrentIndex(NeedsHelpModel::TrendColumn);
    auto *sortCaption = new QLabel(QStringLiteral("&Sort by:"), this);
    sortCaption->setBuddy(m_sortBy);
    m_descending = new QCheckBox(QStringLiteral("&Highest first"), this);
    m_descending->setObjectName(QStringLiteral("chkDescending"));
    connect(m_sortBy, &QComboBox::currentIndexChanged, this, &ClassViewDialog::sortRows);
    connect(m_descending, &QCheckBox::toggled, this, &ClassViewDialog::sortRows);
    // A click on a header shows in the two controls, so they never disagree.
    connect(m_table->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this,
            [this](int column, Qt::SortOrder order) {
                const QSignalBlocker quietCombo(m_sortBy);
                const QSignalBlocker quietBox(m_descending);
                m_sortBy->setCurrentIndex(column);
                m_descending->setChecked(order == Qt::DescendingOrder);
            });

    auto *sortRow = new QHBoxLayout;
    sortRow->addWidget(sortCaption);
    sortRow->addWidget(m_sortBy);
    sortRow->addWidget(m_descending);
    sortRow->addStretch(1);

    auto *note = new QLabel(
        QStringLiteral("Scores compare the mean of the latest five tests with the five before; "
                       "a change within 5 % (or one point) reads as level. Facts not yet known "
                       "are Arithmetic facts wrong more than a quarter of their latest answers."),
        this);
    note->setWordWrap(true);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setObjectName(QStringLiteral("cmdClose"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(sortRow);
    layout->addWidget(m_table, 1);
    layout->addWidget(note);
    layout->addWidget(buttons);
    sortRows();
    m_table->resizeColumnsToContents();
    resize(860, 520);
}

void ClassViewDialog::sortRows()
{
    m_table->sortByColumn(m_sortBy->currentIndex(),
                          m_descending->isChecked() ? Qt::DescendingOrder : Qt::AscendingOrder);
}
