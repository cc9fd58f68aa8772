#pragma once

#include <QStringList>
#include <QVector>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QLabel;
QT_END_NAMESPACE

class ColumnFileText;

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
    /// Of a column's number, from 1.
    bool isChosen(int column) const { return m_columns.contains(column); }
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
};
