#include "widgets/OpenOutside.h"

#include <QDesktopServices>
#include <QSignalSpy>
#include <QUrl>

#include <gtest/gtest.h>

namespace {

/// Stands for the desktop's opener.
class Opener : public QObject {
    Q_OBJECT

 public:
    Opener() { QDesktopServices::setUrlHandler(u"file"_qs, this, "open"); }
    ~Opener() override { QDesktopServices::unsetUrlHandler(u"file"_qs); }
    Q_DISABLE_COPY_MOVE(Opener)

 public Q_SLOTS:
    void open(const QUrl& address) { Q_EMIT opened(address); }

 Q_SIGNALS:
    void opened(const QUrl& address);
};

TEST(OpenOutside, WithoutAFileManagerOnTheBusTheDesktopOpensTheFolder) {
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus");
    const Opener opener;
    QSignalSpy opened(&opener, &Opener::opened);
    OpenOutside::folder(u"/home/u/a folder%41#1"_qs);
    ASSERT_TRUE(opened.wait());
    EXPECT_EQ(opened.takeFirst().first().toUrl().toLocalFile(), u"/home/u/a folder%41#1"_qs);
}

}  // namespace

#include "OpenOutsideTest.moc"
