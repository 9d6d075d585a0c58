#pragma once

#include "editor/Editor.h"
#include "editor/control/ControlFile.h"
#include "editor/control/TextControl.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

/// A visible control with a text from a file, as a person gets it.
struct LoadedControl : testing::Test {
    QTemporaryDir folder;
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;

    LoadedControl() {
        control.resize(700, 400);
        control.show();
    }
    QString path() const { return folder.filePath(u"file.txt"_qs); }
    void load(const QByteArray& bytes) {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        ASSERT_FALSE(control.file().OpenFile(path()));
    }
};
