#include "displayfixture.h"
#include "logview/markeritempropertywidget.h"
#include "support/testmain.h"

#include <QColorDialog>
#include <QTimer>

namespace {

struct MarkerFixture : DisplayFixture
{
    explicit MarkerFixture(const QString &name = QStringLiteral("Top"))
    {
        addMarker(name, 750);
        addTrack(1, "Linear\n");
        show();
        marker = showMarker(name);
    }
    // Dark or coloured pixels in a rectangle around the marker's left end.
    bool isDrawn(const QRect &area) const
    {
        const QImage image = picture(scene(), area.translated(0, static_cast<int>(marker->y())));
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y) != QColor(Qt::white))
                    return true;
        return false;
    }
    MarkerItem *marker;
};

void answerColorDialog(const QColor &color, bool accepts)
{
    QTimer::singleShot(0, [color, accepts] {
        auto *dialog = qobject_cast<QColorDialog *>(QApplication::activeModalWidget());
        if (!dialog || dialog->windowTitle() != QLatin1String("Select Color")
            || dialog->currentColor() != QColor(Qt::black))
            qFatal("no colour dialog that starts from black");
        dialog->setCurrentColor(color);
        accepts ? dialog->accept() : dialog->reject();
    });
}

} // namespace

class tst_markeritem : public QObject
{
    Q_OBJECT

private slots:
    void dataAndBounds();
    void aNewMarkersPen();
    void theLineSpansTheTracks();
    void namesStandLeftOfTheTracks();
    void theNameMayMove();
    void whatIsDrawnIsRepaintedWhole();
    void selected();
    void panelRows();
    void panelSlots();
    void depthsMoveByTheTotalDepth();
    void aDepthLeftAsItWasMovesNothing();
    void badDepths();
    void aMarkerWithoutAScene();
};

void tst_markeritem::dataAndBounds()
{
    MarkerFixture f;
    QCOMPARE(f.marker->data(0).toString(), QString("W"));
    QCOMPARE(f.marker->data(1).toString(), QString("Top"));
    QCOMPARE(f.marker->data(2).toFloat(), 750.0F);
    QCOMPARE(f.marker->boundingRect(), QRectF(0, 0, 192, 2));
    QCOMPARE(f.marker->shape().boundingRect(), QRectF(0, 0, 192, 2));
    f.track(0)->setWidthInches(3);
    QCOMPARE(f.marker->boundingRect(), QRectF(0, 0, 288, 2));
}

void tst_markeritem::aNewMarkersPen()
{
    const MarkerItem marker;
    QCOMPARE(marker.currentPen(), QPen(QBrush(Qt::black), 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void tst_markeritem::theLineSpansTheTracks()
{
    MarkerFixture f;
    const int y = static_cast<int>(f.marker->y());
    const auto isRed = [&](int x) {
        return f.pixel(x, y) == QColor(200, 0, 0) || f.pixel(x, y + 1) == QColor(200, 0, 0)
            || f.pixel(x, y - 1) == QColor(200, 0, 0);
    };
    for (const int x : {2, 96, 190})
        QVERIFY(isRed(x));
    f.marker->setLineThickness(5);
    QCOMPARE(f.pixel(96, y - 2), QColor(200, 0, 0));
    QCOMPARE(f.pixel(96, y + 1), QColor(200, 0, 0));
}

void tst_markeritem::namesStandLeftOfTheTracks()
{
    QCOMPARE(MarkerItem::nameRect(37), QRectF(-39, -10, 37, 20));
    QCOMPARE(MarkerItem::nameRect(80), QRectF(-82, -10, 80, 20));
    QCOMPARE(MarkerItem::nameRect(81), QRectF(-50, -10, 50, 40));
    MarkerFixture f;
    QVERIFY(f.isDrawn(QRect(-30, -6, 28, 12)));
    MarkerFixture wrapped(QStringLiteral("Some very long formation name"));
    QVERIFY(wrapped.isDrawn(QRect(-50, -10, 50, 12)));
    QVERIFY(wrapped.isDrawn(QRect(-50, 3, 48, 20))); // a second line
    QVERIFY(!wrapped.isDrawn(QRect(-120, -10, 68, 40)));
    // The view shows the whole of a name of 80 pixels.
    QCOMPARE(f.display->logView()->sceneRect().left(), -84.0);
    QCOMPARE(f.display->headerView()->sceneRect().left(), -84.0);
    QCOMPARE(f.scene()->sceneRect().left(), 0.0);
}

// For displays in which names stand close: the name moves, the line stays.
void tst_markeritem::theNameMayMove()
{
    MarkerFixture f;
    const QRectF extent = f.marker->nameExtent(QApplication::font());
    QVERIFY(extent.right() <= -2 && extent.left() >= -40);
    QVERIFY(extent.top() >= -10 && extent.bottom() <= 10 && extent.height() >= 8);
    f.marker->setNameShift(30);
    QVERIFY(!f.isDrawn(QRect(-30, -6, 28, 12)));
    QVERIFY(f.isDrawn(QRect(-30, 24, 28, 12)));
    const int y = static_cast<int>(f.marker->y());
    QCOMPARE(f.pixel(96, y), f.marker->currentPen().color());
    f.marker->setNameOnPaper(true);
    f.marker->setNameShown(false);
    QVERIFY(!f.isDrawn(QRect(-50, -20, 48, 80)));
    QCOMPARE(f.pixel(96, y), f.marker->currentPen().color()); // the line stays
    f.marker->setNameShown(true);
    QVERIFY(f.isDrawn(QRect(-30, 24, 28, 12)));
    MarkerFixture wrapped(QStringLiteral("Some very long formation name, in far more lines than there is room for"));
    const QRectF box = wrapped.marker->nameExtent(QApplication::font());
    QCOMPARE(box.top(), -10.0);
    QVERIFY(box.bottom() > 15 && box.bottom() <= 30);
    QVERIFY(box.left() >= -50 && box.right() <= 0);
}

void tst_markeritem::whatIsDrawnIsRepaintedWhole()
{
    MarkerFixture f;
    const double reach = MarkerItem::maximumThickness / 2.0 + 1; // of a selected line, which is thicker
    const QRectF line = QRectF(0, 0, 192, 0).adjusted(-reach, -reach, reach, reach);
    const QRectF names = MarkerItem::nameRect(80) | MarkerItem::nameRect(81);
    for (const double shift : {0, 30, -30}) {
        f.marker->setNameShift(shift);
        const QRectF area = f.marker->childItems().first()->boundingRect();
        QVERIFY(area.contains(line));
        QVERIFY(area.contains(names.translated(0, shift)));
    }
}

void tst_markeritem::selected()
{
    MarkerFixture f;
    const QPen normal = f.marker->currentPen();
    f.marker->setSelected(true);
    QCOMPARE(f.marker->currentPen().width(), normal.width() + 2);
    QVERIFY(f.marker->currentPen().color() != normal.color());
    const int y = static_cast<int>(f.marker->y());
    QCOMPARE(f.pixel(96, y), f.marker->currentPen().color());
}

void tst_markeritem::panelRows()
{
    MarkerFixture f;
    MarkerItemPropertyWidget *panel = f.panelOf(f.marker);
    QCOMPARE(
        f.captions(panel),
        (QStringList{"Marker Property", "Well Name", "W", "Marker Name", "Depth", "Line Color", "Line Thickness"}));
    QCOMPARE(f.text(panel, "markerNameEdit"), QString("Top"));
    QCOMPARE(f.text(panel, "depthEdit"), QString("750.00"));
    const auto *thickness = panel->findChild<QComboBox *>(QStringLiteral("lineThicknessBox"));
    QCOMPARE(thickness->count(), 5);
    QCOMPARE(thickness->itemText(0), QString("1"));
    QCOMPARE(thickness->itemText(4), QString("5"));
    const auto *button = panel->findChild<QPushButton *>(QStringLiteral("lineColorButton"));
    QCOMPARE(button->icon().pixmap(button->iconSize()).toImage().pixelColor(5, 5), QColor(200, 0, 0));
}

void tst_markeritem::panelSlots()
{
    MarkerFixture f;
    MarkerItemPropertyWidget *panel = f.panelOf(f.marker);
    f.type(panel, "markerNameEdit", QStringLiteral("Base"));
    QCOMPARE(f.marker->data(1).toString(), QString("Base"));
    for (int index = 4; index >= 0; --index) {
        panel->findChild<QComboBox *>(QStringLiteral("lineThicknessBox"))->setCurrentIndex(index);
        QCOMPARE(f.marker->lineThickness(), index + 1);
        QCOMPARE(panel->findChild<QComboBox *>(QStringLiteral("lineThicknessBox"))->currentIndex(), index);
    }
    auto *button = panel->findChild<QPushButton *>(QStringLiteral("lineColorButton"));
    answerColorDialog(QColor(1, 2, 3), false);
    button->click();
    QCOMPARE(f.marker->lineColor(), QColor(200, 0, 0));
    answerColorDialog(QColor(1, 2, 3), true);
    button->click();
    QCOMPARE(f.marker->lineColor(), QColor(1, 2, 3));
    QCOMPARE(button->icon().pixmap(button->iconSize()).toImage().pixelColor(5, 5), QColor(1, 2, 3));
    for (const char *slot :
         {"markerNameChanged()", "markerDepthChanged()", "lineColorChanged()", "lineThicknessChanged(int)"})
        QVERIFY(panel->metaObject()->indexOfSlot(slot) >= 0);
}

void tst_markeritem::depthsMoveByTheTotalDepth()
{
    MarkerFixture f;
    const int height = f.scene()->trackHeight();
    f.type(f.panelOf(f.marker), "depthEdit", QStringLiteral("1500"));
    QCOMPARE(f.marker->depth(), 1500.0F);
    QCOMPARE(f.marker->pos(), QPointF(0, height));
    QCOMPARE(f.text(f.panelOf(f.marker), "depthEdit"), QString("1500.00"));
    // Start depth, depth type and unit do not count.
    f.type(f.panelOf(f.marker), "depthEdit", QStringLiteral("750"));
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    f.type(f.panelOf(f.marker), "depthEdit", QStringLiteral("1500"));
    QCOMPARE(f.marker->y(), static_cast<double>(f.scene()->trackHeight()));
}

void tst_markeritem::aDepthLeftAsItWasMovesNothing()
{
    MarkerFixture f;
    f.marker->setDepth(750.126F);
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    const double y = f.marker->y();
    emit f.panelOf(f.marker)->findChild<QLineEdit *>(QStringLiteral("depthEdit"))->editingFinished();
    QCOMPARE(f.marker->depth(), 750.126F);
    QCOMPARE(f.marker->y(), y);
}

void tst_markeritem::badDepths()
{
    MarkerFixture f;
    const double y = f.marker->y();
    QLineEdit *field = f.panelOf(f.marker)->findChild<QLineEdit *>(QStringLiteral("depthEdit"));
    for (const char *text : {"deep", "", "-", "1e39", "nan", "inf"}) {
        field->setText(QString::fromLatin1(text));
        QVERIFY(QMetaObject::invokeMethod(f.panelOf(f.marker), "markerDepthChanged"));
        QCOMPARE(f.marker->depth(), 750.0F);
        QCOMPARE(f.marker->y(), y);
        QCOMPARE(field->text(), QString("750.00"));
    }
    f.scene()->setTotalDepth(0);
    f.type(f.panelOf(f.marker), "depthEdit", QStringLiteral("10"));
    QCOMPARE(f.marker->depth(), 10.0F);
    QCOMPARE(f.marker->y(), y); // a well without depth has no place for it
}

void tst_markeritem::aMarkerWithoutAScene()
{
    MarkerItem marker;
    MarkerItemPropertyWidget panel(&marker);
    DisplayFixture::type(&panel, "depthEdit", QStringLiteral("12.5"));
    QCOMPARE(marker.depth(), 12.5F);
    QCOMPARE(marker.y(), 0.0);
}

LORVA_TEST_MAIN(tst_markeritem)
#include "tst_markeritem.moc"
