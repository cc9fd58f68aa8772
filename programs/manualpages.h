#pragma once

#include "programs/manualtext.h"

#include <QTextDocument>
#include <QTextFormat>

#include <memory>

QT_BEGIN_NAMESPACE
class QPagedPaintDevice;
class QTextTable;
QT_END_NAMESPACE

namespace programs {

/// A heading of the manual and the page, from 1, on which it stands within its document.
struct ManualHeading
{
    QString text;
    int level;
    int page;
};

/// A chapter laid out for paper: pictures, tables and commands fit the page, no heading stands alone at its end, no line alone
/// at its top, and no row of a table on two pages.
class ManualDocument : public QTextDocument
{
    Q_OBJECT

public:
    /// Pictures are taken from \a pictureFolder by their names. \a pageSize in dots of \a device, which must outlive
    /// the document.
    ManualDocument(const ManualChapter &chapter, const QString &pictureFolder, QPagedPaintDevice *device,
                   const QSizeF &pageSize);

    /// Of the first two levels.
    QVector<ManualHeading> headings();

protected:
    QVariant loadResource(int type, const QUrl &name) override;

private:
    void layOut(QPagedPaintDevice *device, const QSizeF &pageSize);
    void fitPictures();
    void styleTables();
    void styleText();
    void styleCode();
    bool keepHeadings();
    void keepTables();
    void keepTable(QTextTable *table);
    void keepRow(const QTextTable &table, int row);
    void keepLines();
    void setBreakBefore(const QTextBlock &block,
                        QTextFormat::PageBreakFlags policy = QTextFormat::PageBreak_AlwaysBefore);
    int pageOf(const QTextBlock &block) const;
    int lastPageOf(const QTextBlock &block) const;
    QVector<int> pagesOfLines(const QTextBlock &block) const;

    QString m_pictureFolder;
    QSizeF m_pageInches;
};

/// Writes the manual as PDF pages: a title, the contents with page numbers, the chapters. Returns why it could not be
/// written, or an empty string.
QString writeManual(const QVector<ManualChapter> &chapters, const QString &pictureFolder, const QString &file);

} // namespace programs
