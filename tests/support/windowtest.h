#pragma once

#include "menus/menubar1.h"
#include "testapp.h"

#include <QPushButton>
#include <QTest>

// One window for a whole test program, started on the numbered book. Each
// test begins with the default settings at 552 x 516 and the book's first
// poem on the reading page.
class WindowTest : public QObject {
    Q_OBJECT
protected:
    QTemporaryDir m_dir;
    std::unique_ptr<TestApp> m_t;
    verlis::App *app = nullptr;
    verlis::mainWindow *w = nullptr;

    verlis::MenuBar1 &bar() const { return app->menuBar(); }

    // As a user would: the item must be usable, then it runs.
    void trigger(const char *name, int index = 0)
    {
        QAction *item = bar().item(QString::fromUtf8(name), index);
        QVERIFY2(item && item->isEnabled(), name);
        item->trigger();
    }

    void resize(QSize size)
    {
        w->setClientGeometry(40, 40, size.width(), size.height());
        QTRY_COMPARE(QSize(w->Width(), w->Height()), size.expandedTo(QSize(480, 480)));
    }

private slots:
    void initTestCase()
    {
        QVERIFY((m_t = TestApp::started(m_dir, numberedBook())) != nullptr);
        app = m_t->app.get();
        w = &app->window();
        QVERIFY(QTest::qWaitForWindowExposed(w));
    }

    void init()
    {
        app->prefs = verlis::Preferences{};
        verlis::normalisePreferences(app->prefs, verlis::WindowLimits);
        resize(QSize(552, 516));
        app->setAppearance();
        w->readText(m_dir.filePath(QStringLiteral("Verlis.txt")));
        w->makePBtn()->click();
    }
};
