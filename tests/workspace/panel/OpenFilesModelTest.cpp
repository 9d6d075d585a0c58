#include "workspace/panel/OpenFilesModel.h"

#include <QIcon>
#include <QSignalSpy>

#include <gtest/gtest.h>

class RowsOfOpenFiles : public testing::Test {
 protected:
    RowsOfOpenFiles() {
        m_model.add(u"/home/u/one.txt"_qs, u"F1"_qs);
        m_model.add(u"Document2"_qs, u"F2"_qs);
    }

    QVariant at(int row, int role) const { return m_model.data(m_model.index(row), role); }

    OpenFilesModel m_model;
};

TEST_F(RowsOfOpenFiles, ARowHasTextKeyTagAndToolTip) {
    EXPECT_EQ(m_model.rowCount(), 2);
    EXPECT_EQ(at(0, Qt::DisplayRole), u"one.txt"_qs);
    EXPECT_EQ(at(0, Qt::UserRole), u"F1"_qs);
    EXPECT_EQ(at(0, Qt::UserRole + 1), u"/home/u/one.txt"_qs);
    EXPECT_EQ(at(0, Qt::ToolTipRole), u"/home/u/one.txt"_qs);
}

TEST_F(RowsOfOpenFiles, ADocumentThatWasNeverSavedHasItsCaptionEverywhere) {
    for (const int role : {int{Qt::DisplayRole}, int{Qt::ToolTipRole}, Qt::UserRole + 1}) {
        EXPECT_EQ(at(1, role), u"Document2"_qs);
    }
    EXPECT_TRUE(m_model.isUntitled(1));
    EXPECT_FALSE(m_model.isUntitled(0));
    m_model.setShowPath(true);
    EXPECT_EQ(at(1, Qt::DisplayRole), u"Document2"_qs);
}

TEST_F(RowsOfOpenFiles, AFileNamedDocumentIsNotUntitled) {
    m_model.set(u"/home/u/Document2"_qs, u"F2"_qs, 1);
    EXPECT_FALSE(m_model.isUntitled(1));
}

TEST_F(RowsOfOpenFiles, WithPathsShownTheTextIsTheWholePath) {
    const QSignalSpy changed(&m_model, &OpenFilesModel::dataChanged);
    m_model.setShowPath(true);
    EXPECT_EQ(at(0, Qt::DisplayRole), u"/home/u/one.txt"_qs);
    EXPECT_EQ(changed.count(), 1);
    m_model.setShowPath(false);
    EXPECT_EQ(at(0, Qt::DisplayRole), u"one.txt"_qs);
}

TEST_F(RowsOfOpenFiles, ARowIsUpdatedByItsKey) {
    m_model.set(u"/tmp/new.txt"_qs, u"F2"_qs, 2);
    EXPECT_EQ(at(1, Qt::DisplayRole), u"new.txt"_qs);
    EXPECT_EQ(at(1, Qt::ToolTipRole), u"/tmp/new.txt"_qs);
    EXPECT_EQ(at(1, OpenFilesModel::Image), 2);
}

TEST_F(RowsOfOpenFiles, AnEmptyFileChangesTheImageAlone) {
    m_model.set({}, u"F1"_qs, 3);
    EXPECT_EQ(at(0, OpenFilesModel::Tag), u"/home/u/one.txt"_qs);
    EXPECT_EQ(at(0, OpenFilesModel::Image), 3);
}

TEST_F(RowsOfOpenFiles, AMissingKeyIsPassedOver) {
    m_model.set(u"/x"_qs, u"F9"_qs, 2);
    m_model.remove(u"F9"_qs);
    EXPECT_EQ(m_model.rowCount(), 2);
    EXPECT_EQ(m_model.rowOf(u"F9"_qs), -1);
    EXPECT_EQ(m_model.keyAt(-1), QString());
    EXPECT_EQ(m_model.keyAt(7), QString());
}

TEST_F(RowsOfOpenFiles, ARemovedRowIsGone) {
    m_model.remove(u"F1"_qs);
    EXPECT_EQ(m_model.rowCount(), 1);
    EXPECT_EQ(m_model.rowOf(u"F2"_qs), 0);
    m_model.clear();
    EXPECT_EQ(m_model.rowCount(), 0);
}

TEST_F(RowsOfOpenFiles, EachStateHasAPictureOfItsOwnAndIsSpoken) {
    const char* const spoken[] = {"one.txt", "one.txt, changed", "one.txt, locked"};
    QList<QImage> pictures;
    for (int image = 1; image <= 3; ++image) {
        m_model.set({}, u"F1"_qs, image);
        EXPECT_EQ(at(0, Qt::AccessibleTextRole).toString(), QLatin1String(spoken[image - 1]));
        pictures << at(0, Qt::DecorationRole).value<QIcon>().pixmap(16).toImage();
        EXPECT_FALSE(pictures.last().isNull());
    }
    EXPECT_NE(pictures.at(0), pictures.at(1));
    EXPECT_NE(pictures.at(1), pictures.at(2));
    EXPECT_NE(pictures.at(0), pictures.at(2));
}

TEST_F(RowsOfOpenFiles, AnImageThatDoesNotExistIsTakenAsTheNearest) {
    m_model.set({}, u"F1"_qs, 0);
    EXPECT_EQ(at(0, OpenFilesModel::Image), 1);
    m_model.set({}, u"F1"_qs, 77);
    EXPECT_EQ(at(0, OpenFilesModel::Image), 3);
}
