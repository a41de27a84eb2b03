// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/IconStore.h"
#include "widgets/ItemListModel.h"

#include <QAbstractItemModelTester>
#include <QMimeData>
#include <QTest>

using namespace tessaranth;

class TestItemListModel : public QObject {
    Q_OBJECT

private slots:
    void init();
    void sortsAsCollectorsExpect();
    void ownOrderComesBack();
    void selectionFollowsItsRow();
    void rowsAreCarriedById();

private:
    QStringList column(int number) const;

    IconStore m_icons{TESSARANTH_SHARE "/tsrthres.dll"};
    std::unique_ptr<ItemListModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void TestItemListModel::init() {
    m_tester.reset();
    m_model = std::make_unique<ItemListModel>(m_icons);
    m_tester = std::make_unique<QAbstractItemModelTester>(
        m_model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    ItemList list({{"Opus"}, {"Pos", true}});
    const std::pair<const char*, const char*> rows[] = {{"Op. 10", "2"},        {"Op. 2", "10"},
                                                        {"op. 18 No. 10", "1"}, {"K. 16a", ""},
                                                        {"Op. 18 No. 2", "9"},  {"K. 16", "2"}};
    qint64 id = 100;
    for (const auto& [opus, position] : rows)
        list.addRow(++id, "Comp", {opus, position});
    m_model->setList(std::move(list));
}

QStringList TestItemListModel::column(int number) const {
    QStringList texts;
    for (int row = 0; row < m_model->rowCount(); ++row)
        texts.push_back(m_model->index(row, number).data().toString());
    return texts;
}

void TestItemListModel::sortsAsCollectorsExpect() {
    m_model->sort(0);
    QCOMPARE(column(0), QStringList({"K. 16", "K. 16a", "Op. 2", "Op. 10", "Op. 18 No. 2", "op. 18 No. 10"}));
    m_model->sort(1, Qt::DescendingOrder);
    QCOMPARE(column(1), QStringList({"10", "9", "2", "2", "1", ""}));
    // Equal rows keep the order of the list in both directions.
    QCOMPARE(column(0).mid(2, 2), QStringList({"Op. 10", "K. 16"}));
    m_model->sort(1, Qt::AscendingOrder);
    QCOMPARE(column(0).mid(2, 2), QStringList({"Op. 10", "K. 16"}));
}

void TestItemListModel::ownOrderComesBack() {
    const QStringList before = column(0);
    m_model->sort(0);
    QVERIFY(column(0) != before);
    m_model->sort(-1);
    QCOMPARE(column(0), before);
}

void TestItemListModel::selectionFollowsItsRow() {
    const QPersistentModelIndex kept = m_model->indexOf(104);
    QCOMPARE(kept.data().toString(), "K. 16a");
    m_model->sort(0, Qt::DescendingOrder);
    QCOMPARE(kept.data().toString(), "K. 16a");
    QCOMPARE(m_model->id(kept), 104);
    QVERIFY(!m_model->indexOf(1).isValid());
    m_model->setList({});
    QVERIFY(!kept.isValid());
}

void TestItemListModel::rowsAreCarriedById() {
    m_model->sort(0);
    const std::unique_ptr<QMimeData> data(
        m_model->mimeData({m_model->index(0, 0), m_model->index(0, 1), m_model->index(2, 0)}));
    QCOMPARE(data->data("application/x-tessaranth-items"), QByteArray("106\n102\n"));
    QVERIFY(!m_model->index(0, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
}

QTEST_MAIN(TestItemListModel)
#include "test_itemlistmodel.moc"
