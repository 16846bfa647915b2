// The maker's addresses: what is handed to the desktop, and that it is the same whatever is open.
#include "ui/anschriften.h"

#include <gtest/gtest.h>

#include <QDesktopServices>
#include <QTextBrowser>

namespace {

// Stands in for the desktop. A text browser, since it has a slot that takes an address.
class Desktop : public QTextBrowser {
  public:
    Desktop() {
        for (const QString& art : {QStringLiteral("https"), QStringLiteral("mailto")})
            QDesktopServices::setUrlHandler(art, this, "setSource");
    }
    ~Desktop() override {
        for (const QString& art : {QStringLiteral("https"), QStringLiteral("mailto")})
            QDesktopServices::unsetUrlHandler(art);
    }
    QStringList geoeffnet;

  protected:
    void doSetSource(const QUrl& anschrift, QTextDocument::ResourceType) override {
        geoeffnet += anschrift.toString(QUrl::FullyEncoded);
    }
};

TEST(Anschriften, GehenAnDenDesktopUndSindFest) {
    Desktop desktop;
    InternetseiteOeffnen();
    SupportSchreiben();
    ASSERT_EQ(desktop.geoeffnet.size(), 2);
    EXPECT_EQ(desktop.geoeffnet[0], Internetadresse());
    EXPECT_EQ(desktop.geoeffnet[1], QStringLiteral("mailto:") + Mailadresse() +
                                        QStringLiteral("?Subject=Supportanfrage%20f%C3%BCr%20'Lindgarn%201.0'"
                                                       "&Body=Anfrage%20von%20%0D%0A"));
}

}  // namespace
