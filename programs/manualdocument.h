#pragma once

#include "programs/manualtext.h"

#include <QFont>
#include <QTextBlock>
#include <QTextDocument>
#include <optional>

QT_BEGIN_NAMESPACE
class QPagedPaintDevice;
class QTextTable;
QT_END_NAMESPACE

namespace programs {

constexpr int manualDotsPerInch = 1200;
constexpr int manualTextSize = 10; ///< points
constexpr double pointsPerInch = 72;
/// The font of the manual's texts.
QFont manualFont(int points);
/// Of headings of a level, in points.
int manualHeadingSize(int level);

/// A heading of the manual and where it stands within its document.
struct ManualHeading
{
    QString text;
    int level;
    int page; ///< from 1
    double top; ///< dots from the upper end of the page's text
};

/// The number of a chapter that a text names, and where it does.
struct ManualReference
{
    int chapter; ///< from 1
    int page; ///< from 1, within its document
    QRectF area; ///< dots from the upper left corner of the page's text
};

/// A chapter laid out for paper: pictures, tables and commands fit the page, no heading stands alone at its end, no line alone
/// at its end or top, and no row of a table on two pages.
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
    /// From top to bottom.
    QVector<ManualReference> references();

protected:
    QVariant loadResource(int type, const QUrl &name) override;

private:
    void layOut(QPagedPaintDevice *device, const QSizeF &pageSize);
    void fitPictures();
    void styleTables();
    void styleText();
    void styleCode();
    double commandSize(int letters) const;
    void spaceCommands(const QVector<QTextBlock> &commands);
    void keepTogether();
    bool isTorn(const QTextBlock &block) const;
    bool isApart(const QTextBlock &block) const;
    static QTextBlock announcedFrom(const QTextBlock &block);
    void setBreakBefore(const QTextBlock &block, bool isThere);
    void keepTable(QTextTable *table);
    void keepRows(const QTextTable &table);
    void keepRow(const QTextTable &table, int row);
    static void padRow(const QTextTable &table, int row, std::optional<double> padding);
    double topOf(const QTextBlock &block) const;
    int pageOf(const QTextBlock &block) const;
    int lastPageOf(const QTextBlock &block) const;
    QVector<int> pagesOfLines(const QTextBlock &block) const;

    QString m_pictureFolder;
    QSizeF m_pageInches;
    QVector<QVector<QTextBlock>> m_commands; ///< that stand one below the other
};

} // namespace programs
