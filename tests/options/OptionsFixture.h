#pragma once
// The options dialog on the offscreen platform over a settings tree and file of the test's own,
// with the real action lists and trigger table behind it, driven by real clicks.

#include "OptionsDriver.h"

#include "commands/AppActionClass.h"
#include "commands/AppCommandListClass.h"
#include "settings/DataSaveLoadClass.h"

#include "common/RecordingPresenter.h"
#include "common/TestFiles.h"

#include <QTemporaryDir>

#include <memory>

class OptionsTest : public ::testing::Test, protected OptionsDriver {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        path = dir.filePath(QStringLiteral("Marnoquill.ini"));
    }

    void TearDown() override { dialog.reset(); }

    frmOption& Open()
    {
        dialog.reset();
        action = std::make_unique<AppActionClass>(detailSet);
        commands = std::make_unique<AppCommandListClass>();
        commands->RefDetailSet(detailSet);
        dialog = std::make_unique<frmOption>(detailSet, path, *action, *commands, nullptr);
        dialog->show();
        ui = dialog.get();
        return *dialog;
    }

    QString LastMessage() const { return shown.Last().text; }

    QTemporaryDir dir;
    QString path;
    SDC detailSet = std::make_shared<StructuredDataClass>();
    std::unique_ptr<AppActionClass> action;
    std::unique_ptr<AppCommandListClass> commands;
    std::unique_ptr<frmOption> dialog;
    ScopedRecordingPresenter shown;
};
