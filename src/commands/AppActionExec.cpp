// Running an action: the fixed names, then the three prefixed families.

#include "commands/ActionCatalogue.h"
#include "commands/AppActionClass.h"
#include "settings/SettingsThreads.h"
#include "commands/ViewerOperations.h"
#include "support/CommonLibClass.h"
#include "support/MessagePresenter.h"

#include <pthread.h>

#include <new>

namespace {

// A composite that reaches itself recurses until the stack runs out, and the user then reads
// the out-of-stack message of the Windows build, whose thread had one megabyte of stack. Here
// the dispatcher measures its own stack use against that same megabyte, so the message is an
// ordinary failure instead of a dead process, and however deep the steps go, the operations
// called by the last of them keep the rest of the real stack.
constexpr quintptr StackBudget = 1024 * 1024;
// Should the thread's stack end sooner than that, stop this far before its end.
constexpr quintptr StackReserve = 256 * 1024;
constexpr int OutOfStackSpace = 28;
const QString OutOfStackSpaceText = QStringLiteral("スタック領域が不足しています。");

constexpr int OutOfMemory = 7;
const QString OutOfMemoryText = QStringLiteral("メモリが不足しています。");
constexpr int InternalError = 51;

quintptr StackHere()
{
    return reinterpret_cast<quintptr>(__builtin_frame_address(0));
}

// The lowest usable address of this thread's stack; asked once per thread, as the main thread's
// answer comes from reading the process's memory map.
quintptr StackEnd()
{
    thread_local const quintptr end = [] {
        pthread_attr_t attributes;
        void* address = nullptr;
        size_t size = 0;
        if (pthread_getattr_np(pthread_self(), &attributes) != 0)
            return quintptr{0};
        pthread_attr_getstack(&attributes, &address, &size);
        pthread_attr_destroy(&attributes);
        return reinterpret_cast<quintptr>(address);
    }();
    return end;
}

// Marks the frame of the outermost ExecActionSub while it runs; the stack use of the composite
// steps below it is measured from there.
class StackBaseScope {
public:
    explicit StackBaseScope(quintptr& vBase) : base_(vBase), outermost_(vBase == 0)
    {
        if (outermost_)
            base_ = StackHere();
    }
    ~StackBaseScope()
    {
        if (outermost_)
            base_ = 0;
    }
    StackBaseScope(const StackBaseScope&) = delete;
    StackBaseScope& operator=(const StackBaseScope&) = delete;

private:
    quintptr& base_;
    bool outermost_;
};

void ShowFailure(int vNumber, const QString& vDescription)
{
    MessagePresenter::Message message;
    message.text = QString::number(vNumber) + QStringLiteral(" : ") + vDescription;
    MessagePresenter::Current().Present(message);
}

} // namespace

void AppActionClass::ExecAction(const QString& vAction)
{
    // An action that runs a dialog keeps the message loop turning; whatever is triggered
    // meanwhile is dropped, not queued.
    if (running_)
        return;
    running_ = true;
    try {
        ExecActionSub(vAction);
        running_ = false;
    } catch (const AppError& e) {
        running_ = false;
        ShowFailure(e.Number(), e.Description());
    } catch (const std::bad_alloc&) {
        running_ = false;
        ShowFailure(OutOfMemory, OutOfMemoryText);
    } catch (const std::exception& e) {
        running_ = false;
        ShowFailure(InternalError, QString::fromLocal8Bit(e.what()));
    }
}

void AppActionClass::ExecActionSub(const QString& vAction)
{
    const StackBaseScope stackBase(stackBase_);
    CheckStack();

    for (const FixedAction& action : FixedActions()) {
        if (action.Name == vAction) {
            if (action.Run)
                action.Run(Form());
            break;
        }
    }

    // Only the spelling of the prefixes keeps these apart, so each is tested on its own.
    if (vAction.startsWith(BrackenfoldPrefix))
        Form().ArrangementExec(vAction.mid(BrackenfoldPrefix.size()));
    if (vAction.startsWith(ReadPrefix))
        Form().ReadFolder(vAction);
    if (vAction.startsWith(MultiPrefix))
        ExecMulti(vAction);
}

void AppActionClass::ExecMulti(const QString& vAction)
{
    const SDC composites = settingsthreads::Child(settingsthreads::Child(DetailSet(), MultiGroup), MultiList);
    if (!composites->Exists(vAction)) {
        // Not a failure: a stale step names a deleted composite, and the steps after it still run.
        CommonLibClass::ErrMsgBox(QStringLiteral("複合動作が見つかりません。(動作 : ") + vAction + QStringLiteral(")"));
        return;
    }
    // The steps are taken from the tree as it is now; a step that saves the options replaces the
    // tree, but the composite that is running goes on as it was started.
    const SDC steps = settingsthreads::Child(composites, vAction);
    for (const QString& key : steps->RefDataKey())
        ExecActionSub(steps->DataValue(key));
}

void AppActionClass::CheckStack()
{
    const quintptr here = StackHere();
    const quintptr used = stackBase_ > here ? stackBase_ - here : 0;
    const quintptr end = StackEnd();
    if (used > StackBudget || (end != 0 && here < end + StackReserve))
        throw AppError(OutOfStackSpace, OutOfStackSpaceText);
}
