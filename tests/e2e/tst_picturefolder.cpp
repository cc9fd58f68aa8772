// Pictures of windows, in which one path stands for every machine's.

#include "programs/picturefolder.h"
#include "support/files.h"
#include "support/testmain.h"

#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QVBoxLayout>

namespace {

struct Window
{
    explicit Window(const QString &path)
        : label(new QLabel("6 wells - " + path, &window))
        , field(new QLineEdit(path + "/Import/a.las", &window))
        , text(new QTextEdit(&window))
    {
        text->setPlainText("File " + path + "\nagain " + path);
        auto *column = new QVBoxLayout(&window);
        for (QWidget *widget :
             {static_cast<QWidget *>(label), static_cast<QWidget *>(field), static_cast<QWidget *>(text)})
            column->addWidget(widget);
        window.resize(500, 200);
    }
    QStringList texts() const { return {label->text(), field->text(), text->toPlainText()}; }

    QWidget window;
    QLabel *label;
    QLineEdit *field;
    QTextEdit *text;
};

} // namespace

class tst_picturefolder : public QObject
{
    Q_OBJECT

private slots:
    void pathsOfTheMachineDoNotShow()
    {
        const QString path("/home/me/work/Vellorn");
        Window mine(path);
        Window neutral("/surveys/Demo");
        const programs::PictureFolder pictures(m_folder.path(), path);
        const QStringList before = mine.texts();
        QSignalSpy changed(mine.field, &QLineEdit::textChanged);
        const QImage picture = pictures.pictureOf(&mine.window).toImage();
        QCOMPARE(picture, pictures.pictureOf(&neutral.window).toImage());
        QCOMPARE(mine.texts(), before);
        QCOMPARE(changed.size(), 0);
        QVERIFY(mine.window.grab().toImage() != picture);
    }

    void otherFieldsStayAsTheyAre()
    {
        const QString path("/home/me/work/Vellorn");
        Window mine(path);
        mine.field->setText("a text that is longer than its field, whose beginning is to be seen in the picture");
        mine.field->setCursorPosition(0);
        programs::PictureFolder(m_folder.path(), path).pictureOf(&mine.window);
        QCOMPARE(mine.field->cursorPosition(), 0);
    }

    void namesAndMissingPictures()
    {
        programs::PictureFolder pictures(m_folder.filePath("new/folder"), QString());
        Window one("/a");
        pictures.save(&one.window, "one");
        QVERIFY(pictures.isComplete());
        pictures.setNameEnd("-dark");
        pictures.save(&one.window, "one");
        QCOMPARE(QImage(m_folder.filePath("new/folder/one.png")).size(),
                 one.window.size() * one.window.devicePixelRatioF());
        QCOMPARE(QImage(m_folder.filePath("new/folder/one-dark.png")).size(),
                 one.window.size() * one.window.devicePixelRatioF());
        pictures.save(nullptr, "two");
        QVERIFY(!pictures.isComplete());
    }

private:
    QTemporaryDir m_folder;
};

LORVA_TEST_MAIN(tst_picturefolder)
#include "tst_picturefolder.moc"
