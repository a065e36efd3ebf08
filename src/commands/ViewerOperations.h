#pragma once
// What an action can make the main window do. The dispatcher knows the window only through this
// interface, so the commands library never links the viewer, and tests put a recording stand-in
// in its place. Every member is one operation a named action reaches, with the argument the
// action carries; a failure is raised as AppError and ends the action with its message.

#include <QString>

class ViewerOperations {
public:
    virtual ~ViewerOperations() = default;

    // ---- files and tabs
    virtual void OpenDialog() = 0;
    virtual void FolderOpenDialog() = 0;
    virtual void SelectedTabFilePathCopy() = 0;
    virtual void AllTabClose() = 0;
    virtual void TabClose() = 0;
    virtual void NextTab() = 0;
    virtual void PreviousTab() = 0;
    virtual void SelectedTabUpdate() = 0;

    // ---- pages
    virtual void NextPage() = 0;
    virtual void PreviousPage() = 0;
    virtual void PageJump() = 0;

    // ---- display: size "0" to "6", layout "1" or "2", direction "LR" or "RL"
    virtual void SetPaintSizeMode(const QString& vSizeMode) = 0;
    virtual void SetDoubleDisp(const QString& vMode) = 0;
    virtual void SetDispDirection(const QString& vMode) = 0;

    // ---- rulers: 0 horizontal, 1 vertical
    virtual void AddRuler(qint16 vType) = 0;
    virtual void DeleteAllRuler() = 0;

    // ---- the rest of the window
    virtual void OptionWindowOpen() = 0;
    virtual void DispVersion() = 0;
    virtual void EndApp() = 0;

    // ---- the prefixed families: the sibling's process by its name (prefix taken off), and a
    // read setting by its whole name (prefix kept, since that is how the setting is stored)
    virtual void ArrangementExec(const QString& vProcName) = 0;
    virtual void ReadFolder(const QString& vAction) = 0;
};
