#include <QDir>
#include <QFile>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "gui/QtSettingsStore.h"

namespace kelvane {
namespace {

// Points the per-user settings at a temporary directory for the length of a
// test, so the user's own settings are never read or written.
class QtSettingsStoreTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(directory_.isValid());
        QStandardPaths::setTestModeEnabled(true);
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, directory_.path());
    }

    void TearDown() override {
        QStandardPaths::setTestModeEnabled(false);
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    }

    QString SettingsFile() const {
        return directory_.filePath(QStringLiteral("Kelvane/Kelvane.conf"));
    }

    QTemporaryDir directory_;
};

TEST_F(QtSettingsStoreTest, GivesTheDefaultForAMissingKeyAndWritesNothing) {
    QtSettingsStore store;
    EXPECT_EQ(store.GetSetting(QStringLiteral("Kelvane"), QStringLiteral("Settings"),
                               QStringLiteral("Font"), QStringLiteral("Arial")),
              QStringLiteral("Arial"));
    EXPECT_TRUE(store
                    .GetSetting(QStringLiteral("Kelvane"), QStringLiteral("Settings"),
                                QStringLiteral("Font"), QString())
                    .isEmpty());
    EXPECT_TRUE(QDir(directory_.path()).isEmpty());
}

TEST_F(QtSettingsStoreTest, GivesBackWhatWasSaved) {
    const QStringList texts = {QStringLiteral("Arial"), QStringLiteral("12"),
                               QStringLiteral("a, b = c; [d]"), QStringLiteral("Grüße €"),
                               QString()};
    for (const QString& text : texts) {
        QtSettingsStore{}.SaveSetting(QStringLiteral("Kelvane"), QStringLiteral("Settings"),
                                      QStringLiteral("Text"), text);
        EXPECT_EQ(
            QtSettingsStore{}.GetSetting(QStringLiteral("Kelvane"), QStringLiteral("Settings"),
                                         QStringLiteral("Text"), QStringLiteral("default")),
            text);
    }
}

TEST_F(QtSettingsStoreTest, SavesInTheSectionsGroupOfTheKelvaneStore) {
    QtSettingsStore store;
    store.SaveSetting(QStringLiteral("Kelvane"), QStringLiteral("Settings"),
                      QStringLiteral("Color"), QStringLiteral("255"));
    QSettings saved(QStringLiteral("Kelvane"), QStringLiteral("Kelvane"));
    EXPECT_EQ(saved.fileName(), SettingsFile());
    EXPECT_EQ(saved.value(QStringLiteral("Settings/Color")), QVariant(QStringLiteral("255")));
    QFile file(SettingsFile());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    EXPECT_EQ(file.readAll(), QByteArray("[Settings]\nColor=255\n"));
}

TEST_F(QtSettingsStoreTest, KeepsSectionsAndApplicationsApart) {
    QtSettingsStore store;
    store.SaveSetting(QStringLiteral("Kelvane"), QStringLiteral("Settings"), QStringLiteral("Key"),
                      QStringLiteral("one"));
    store.SaveSetting(QStringLiteral("Kelvane"), QStringLiteral("Other"), QStringLiteral("Key"),
                      QStringLiteral("two"));
    EXPECT_EQ(store.GetSetting(QStringLiteral("Kelvane"), QStringLiteral("Settings"),
                               QStringLiteral("Key"), QString()),
              QStringLiteral("one"));
    EXPECT_EQ(store.GetSetting(QStringLiteral("Kelvane"), QStringLiteral("Other"),
                               QStringLiteral("Key"), QString()),
              QStringLiteral("two"));
    EXPECT_EQ(store.GetSetting(QStringLiteral("Elsewhere"), QStringLiteral("Settings"),
                               QStringLiteral("Key"), QStringLiteral("none")),
              QStringLiteral("none"));
}

}  // namespace
}  // namespace kelvane
