// The download address dialog: what it shows, what it keeps, what it refuses.
#include <QLineEdit>
#include <QPushButton>

#include "history/draw_download.h"
#include "store/factory_data.h"
#include "support/test_support.h"
#include "ui/history/mirror_settings_dialog.h"

namespace dovrex::test {
namespace {

class MirrorSettingsDialogTest : public FreshStoreTest {};

TEST_F(MirrorSettingsDialogTest, KeepsValidAddressesAndRefusesOthers) {
    MirrorSettingsDialog dialog;
    EXPECT_EQ(dialog.addresses(), defaultMirrorAddresses());

    dialog.setAddresses(
        {QStringLiteral("http://a.example/l.txt"), QStringLiteral("ftp://b.example/l.txt"), QString()});
    dialog.accept();
    EXPECT_NE(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(load_MirrorAddresses(), defaultMirrorAddresses()) << "nothing kept while one address is bad";

    dialog.setAddresses(
        {QStringLiteral("http://a.example/l.txt"), QStringLiteral("https://b.example/l.txt"), QString()});
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(load_MirrorAddresses(),
              (QStringList{QStringLiteral("http://a.example/l.txt"),
                           QStringLiteral("https://b.example/l.txt"), defaultMirrorAddresses()[2]}));

    for (QPushButton* b : dialog.findChildren<QPushButton*>())
        if (b->text() == QStringLiteral("恢复默认")) b->click();
    EXPECT_EQ(dialog.addresses(), defaultMirrorAddresses());
}

}  // namespace
}  // namespace dovrex::test
