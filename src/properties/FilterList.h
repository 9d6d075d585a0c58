#pragma once

#include <QList>
#include <QString>

class RegistryStore;

/// The list of file name filters while it is edited. Rows count from 0. Owned by its page.
class FilterList {
 public:
    struct Row {
        QString description;
        QString patterns;  ///< separated by ";"

        bool operator==(const Row&) const = default;
    };

    const QList<Row>& rows() const { return m_rows; }

    /// Reads the stored list in the order of its keys; the default one when none is stored.
    void load(RegistryStore& store);
    /// The default list of the page. It differs from the built-in one in the patterns of two rows.
    void reset();
    /// Replaces the stored list as one transaction. The names of the keys are three digits long, so that row 1,001
    /// overwrites row 1. False: it could not be written, and the stored list is as it was.
    bool save(RegistryStore& store) const;

    /// Adds a row "New" at the end.
    void append();
    void remove(int row);
    /// Exchanges two rows.
    void swap(int row, int other);
    void setDescription(int row, const QString& text);
    void setPatterns(int row, const QString& text);

 private:
    QList<Row> m_rows;
};
