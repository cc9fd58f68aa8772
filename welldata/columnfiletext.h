#pragma once

#include <QByteArray>
#include <QPlainTextEdit>
#include <QVector>

/// The text of a column file, read-only. Lines beyond the first ones are added when the view is scrolled to its end, so
/// that a file of a million lines shows at once.
class ColumnFileText : public QPlainTextEdit
{
    Q_OBJECT

public:
    static constexpr int sliceLines = 10000;

    explicit ColumnFileText(QWidget *parent = nullptr);

    /// The bytes of a file.
    void setBytes(const QByteArray &bytes);
    bool isWhole() const { return m_at >= m_text.size(); }
    int shownLines() const { return m_shownLines; }
    int lineCount() const { return m_lineCount; }

    /// Lines that the import passes over; they show in grey.
    void setHeaderLines(int count);
    /// The chosen columns, from 1; their fields show on a ground of their own.
    void setColumns(const QVector<int> &columns);

    /// No column is narrower, so that what is written above it is whole.
    void setNarrowestColumn(int px);

    /// A column of the first line in view that is not passed over.
    struct Column
    {
        int number; ///< from 1
        int left; ///< in the widget's viewport, pixels
        int right;
    };
    QVector<Column> columnsInView() const;

signals:
    /// Other lines, or another part of them, are shown.
    void viewChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void showMoreAtEnd();
    void appendSlice();
    void alignColumns();
    void mark();

    QByteArray m_text; ///< UTF-8
    QVector<int> m_columns;
    int m_at = 0; ///< of m_text, what is not shown yet
    int m_shownLines = 0;
    int m_lineCount = 0;
    int m_headerLines = 0;
    int m_narrowestPx = 40;
    bool m_isAppending = false;
};
