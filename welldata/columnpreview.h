#pragma once

#include <QByteArray>
#include <QPlainTextEdit>
#include <QStringList>
#include <QVector>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QLabel;
QT_END_NAMESPACE

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

/// The text of a column file under a line that numbers its columns.
class ColumnPreview : public QWidget
{
    Q_OBJECT

public:
    explicit ColumnPreview(QWidget *parent = nullptr);

    ColumnFileText *text() const { return m_text; }
    void setBytes(const QByteArray &bytes);
    /// The chosen columns with what they are chosen for.
    void setChoice(int headerLines, const QVector<int> &columns, const QStringList &labels);
    /// What the line of the numbers says: "1 Name" for a chosen column, else its number.
    QStringList rulerTexts() const;

private:
    void tellHowMuch();
    int widestRulerTextPx() const;
    QString rulerText(int column) const;

    QWidget *m_ruler;
    ColumnFileText *m_text;
    QLabel *m_note;
    QVector<int> m_columns;
    QStringList m_labels;

    friend class ColumnRuler;
};
