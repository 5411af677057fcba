#include "GradientTableWidget.h"
#include "GuiTest.h"
#include "Olvik3DViewerControl.h"
#include "ViewerWindow.h"

/// Text and translation of the finished messages of a .ts file, by context and text.
static QMap<QString, QString> messagesIn(const QString &path, bool onlyFinished)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QMap<QString, QString> messages;
    QString context, source;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == "name")
            context = xml.readElementText();
        else if (xml.name() == "source")
            source = xml.readElementText();
        else if (xml.name() == "translation"
            && !(onlyFinished && xml.attributes().hasAttribute("type")))
            messages[context + '|' + source] = xml.readElementText();
    }
    return messages;
}

/// Ends of lines, mark-up and placeholders, which a translation must neither lose nor add.
static QStringList structureOf(const QString &text)
{
    static const QRegularExpression mark("\n|<[^>]+>|%\\d|&[a-z]+;|\\*\\.ply");
    QStringList marks;
    for (auto found = mark.globalMatch(text); found.hasNext();)
        marks += found.next().captured();
    return marks;
}

class TestTranslations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyTextIsTranslated_data()
    {
        QTest::addColumn<QString>("file");
        const QDir folder(TRANSLATIONS);
        for (const QString &name : folder.entryList({"olvik3dviewer_*.ts"}))
            QTest::newRow(qPrintable(name)) << folder.filePath(name);
    }

    void everyTextIsTranslated()
    {
        QFETCH(QString, file);
        const QMap<QString, QString> sources = messagesIn(TEMPLATE, false);
        const QMap<QString, QString> translations = messagesIn(file, true);
        QVERIFY(sources.size() > 40);
        QCOMPARE(translations.keys(), sources.keys());
        for (auto it = translations.begin(); it != translations.end(); ++it) {
            QVERIFY2(!it.value().isEmpty(), qPrintable(it.key()));
            QCOMPARE(structureOf(it.value()), structureOf(it.key()));
        }
    }

    /// Where the texts are fixed letter by letter, no translation reaches them.
    void germanWindowSpeaksGerman()
    {
        QTranslator german;
        QVERIFY(
            german.load(QLocale("de_AT"), "olvik3dviewer", "_", ":/olvik3dviewer/translations"));
        QVERIFY(qApp->installTranslator(&german));
        Olvik3DViewerControl viewer("viewer", nullptr, nullptr);
        QStringList menus;
        for (const QAction *menu : viewerWindow()->menuBar()->actions())
            menus += menu->text();
        QCOMPARE(menus, QStringList({"&Datei", "View"}));
        for (const QString text :
            {u8"&Nullwerte anzeigen", u8"Set axes scale", u8"&H\u00fcllquader"})
            QVERIFY2(menuItem(text), qPrintable(text));
        GradientTableWidget gradients("test", 0, 1, nullptr);
        QCOMPARE(gradients.windowTitle(), QString(u8"Farbverl\u00e4ufe"));
    }
};

OLVIK_GUI_TEST_MAIN(TestTranslations)
#include "tst_translations.moc"
