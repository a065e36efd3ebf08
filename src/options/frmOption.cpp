// The frame of the options dialog: the page tree beside the pages, the buttons, moving between
// pages, and what "保存" and "キャンセル" do.

#include "options/frmOption.h"

#include "commands/AppActionClass.h"
#include "commands/AppCommandListClass.h"
#include "options/OptionPages.h"
#include "options/OptionValidation.h"
#include "settings/CtrlSaveLoadClass.h"
#include "settings/DataSaveLoadClass.h"
#include "settings/OuterSize.h"
#include "settings/TreeViewSaveLoadClass.h"
#include "support/AppError.h"
#include "support/BusyCursor.h"
#include "support/CommonLibClass.h"
#include "windowing/clsSizing.h"
#include "windowing/ctlSplitter.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedLayout>
#include <QTreeWidget>

namespace {

// The dialog opens at this size; the pages need this much room beside the tree and in height.
constexpr double kOpenWidthTwips = 9480;
constexpr double kOpenHeightTwips = 6900;
constexpr double kPagesMinWidthTwips = 7335;
constexpr double kPagesMinHeightTwips = 6375;
constexpr int kTreeWidthPixels = 140;

const OptionPage& PageOf(int vImage) { return kOptionPages.at(static_cast<size_t>(vImage - 1)); }

} // namespace

frmOption::frmOption(SDC& vDetailSet, const QString& vSettingsPath, AppActionClass& vAction,
                     AppCommandListClass& vCommandList, QWidget* vOwner)
    : QDialog(vOwner), detailSet_(vDetailSet), settingsPath_(vSettingsPath), action_(vAction),
      commandList_(vCommandList), owner_(vOwner)
{
    setObjectName(QStringLiteral("frmOption"));
    setWindowTitle(Caption);
    BuildFrame();
    LoadForm();
}

frmOption::~frmOption() { ClearWorkingTables(); }

void frmOption::ClearWorkingTables()
{
    for (const SDC& table : {work_, keyTable_, gestureTable_, multiTable_, readTable_}) {
        if (table)
            table->Clear();
    }
}

void frmOption::BuildFrame()
{
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(8, 8, 8, 8);
    ctlSplitter1_ = new ctlSplitter(this);
    ctlSplitter1_->setObjectName(QStringLiteral("ctlSplitter1"));
    outer->addWidget(ctlSplitter1_, 1);

    picLeft_ = new QWidget(ctlSplitter1_);
    picLeft_->setObjectName(QStringLiteral("picLeft"));
    auto* left = new QVBoxLayout(picLeft_);
    left->setContentsMargins(0, 0, 0, 0);
    TreeView1_ = new QTreeWidget(picLeft_);
    TreeView1_->setObjectName(QStringLiteral("TreeView1"));
    TreeView1_->setHeaderHidden(true);
    TreeView1_->setRootIsDecorated(false);
    TreeView1_->setStyleSheet(QStringLiteral("QTreeView::item { padding: 3px 2px; }"));
    left->addWidget(TreeView1_);
    ctlSplitter1_->NewChild(picLeft_);
    ctlSplitter1_->SetMinWidth(90);

    auto* pages = new QWidget(ctlSplitter1_);
    pages->setObjectName(QStringLiteral("picRight"));
    pages_ = new QStackedLayout(pages);
    for (QWidget* page : {BuildWindowPage(), BuildMousePage(), BuildGesturePage(), BuildKeyboardPage(),
                          BuildActionPage(), BuildMultiPage(), BuildReadPage(), BuildPopupPage()}) {
        page->setObjectName(QStringLiteral("picOptionMain"));
        page->setProperty("Index", static_cast<int>(picOptionMain_.size()));
        picOptionMain_.push_back(page);
        pages_->addWidget(page);
    }
    ctlSplitter1_->NewChild(pages);
    ctlSplitter1_->setSizes({kTreeWidthPixels, 10000});
    connect(ctlSplitter1_, &ctlSplitter::BarMoved, this, &frmOption::UpdateMinimumSize);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    cmdSave_ = new QPushButton(QStringLiteral("保存"), this);
    cmdSave_->setObjectName(QStringLiteral("cmdSave"));
    cmdCancel_ = new QPushButton(QStringLiteral("キャンセル"), this);
    cmdCancel_->setObjectName(QStringLiteral("cmdCancel"));
    cmdSave_->setAutoDefault(false);
    cmdCancel_->setAutoDefault(false);
    buttons->addWidget(cmdSave_);
    buttons->addWidget(cmdCancel_);
    outer->addLayout(buttons);
    connect(cmdSave_, &QPushButton::clicked, this, &frmOption::cmdSave_Click);
    connect(cmdCancel_, &QPushButton::clicked, this, &frmOption::cmdCancel_Click);
}

void frmOption::LoadForm()
{
    keyTable_ = std::make_shared<StructuredDataClass>();
    gestureTable_ = std::make_shared<StructuredDataClass>();
    readTable_ = std::make_shared<StructuredDataClass>();
    // The outer size, as every size the settings file keeps for the dialog.
    outersize::RestoreOuterSize(this, QSize(clsSizing::PixelsOfTwips(this, kOpenWidthTwips),
                                            clsSizing::PixelsOfTwips(this, kOpenHeightTwips)));

    work_ = detailSet_ ? detailSet_->Clone() : std::make_shared<StructuredDataClass>();
    const SDC multi = work_->Exists(AppActionClass::MultiGroup) ? work_->Thread(AppActionClass::MultiGroup) : nullptr;
    multiTable_ = multi && multi->Exists(AppActionClass::MultiList) && multi->Thread(AppActionClass::MultiList)
                      ? multi->Thread(AppActionClass::MultiList)->Clone()
                      : std::make_shared<StructuredDataClass>();

    // The tree is built from its two tables, as a stored tree would be.
    TreeViewSaveLoadClass tree;
    for (const OptionPage& page : kOptionPages) {
        tree.TreeData()->CreateThread(Utf8(page.Group))->AddData(Utf8(page.Node), QStringLiteral("Text"));
        const SDC properties = tree.PropertyData()->CreateThread(Utf8(page.Group));
        properties->AddData(QString::number(page.Image), QStringLiteral("Image"));
        properties->AddData(QString(), QStringLiteral("Tag"));
    }
    tree.SetTreeView(TreeView1_);
    {
        const QSignalBlocker quiet(TreeView1_);
        tree.Load();
        TreeView1_->setCurrentItem(TreeView1_->topLevelItem(0));
    }
    connect(TreeView1_, &QTreeWidget::currentItemChanged, this, &frmOption::TreeView1_NodeClick);
    ShowPage(TreeView1_->topLevelItem(0));

    FillDropDowns();
    UpdateMinimumSize();
    CommonLibClass::CenteringFormOfOwner(this, owner_);
}

int frmOption::CurrentImage() const
{
    return currentNode_ ? currentNode_->data(0, TreeViewSaveLoadClass::ImageRole).toInt() : 0;
}

void frmOption::TreeView1_NodeClick(QTreeWidgetItem* vNode, QTreeWidgetItem* vPrevious)
{
    Q_UNUSED(vPrevious);
    if (changingNode_ || !vNode || vNode == currentNode_)
        return;
    if (!StorePage()) {
        // The page that failed stays, and so must the selection that shows which page it is.
        changingNode_ = true;
        TreeView1_->setCurrentItem(currentNode_);
        changingNode_ = false;
        return;
    }
    ShowPage(vNode);
}

void frmOption::ShowPage(QTreeWidgetItem* vNode)
{
    currentNode_ = vNode;
    const int image = CurrentImage();
    ResetPage(image);
    CtrlSaveLoadClass binder;
    binder.SetForm(this);
    binder.SetData(work_);
    try {
        binder.LoadValue(Utf8(PageOf(image).Group));
    } catch (const AppError& e) {
        // A hand-edited value that is no number: the page shows what could be read, and the
        // user can put it right and save.
        CommonLibClass::ErrMsgBox(e.Message());
    }
    AfterLoad(image);
    // The stack shows one page and hides the rest; the page gets its place at once, not at the
    // next turn of the event loop, so that it is whole the moment it is shown.
    pages_->setCurrentIndex(image - 1);
    if (!pages_->geometry().isEmpty())
        pages_->setGeometry(pages_->geometry());
}

bool frmOption::ValidatePage()
{
    if (CurrentImage() != 1)
        return true;
    for (const NumberField& field : kNumberFields) {
        QLineEdit* box = Ctl<QLineEdit>(Utf8(field.Control));
        const QString message = CheckNumberField(field, box->text());
        if (!message.isEmpty()) {
            CommonLibClass::ErrMsgBox(message);
            box->setFocus();
            return false;
        }
    }
    return true;
}

bool frmOption::StorePage()
{
    if (!currentNode_)
        return true;
    if (!ValidatePage())
        return false;
    const int image = CurrentImage();
    const OptionPage& page = PageOf(image);
    CtrlSaveLoadClass binder;
    binder.SetForm(this);
    binder.SetData(work_);
    if (image == 1 || image == 2)
        binder.SetListOption(QStringLiteral("Text"));
    for (const QString& control : PageControls(page))
        binder.Grouping(Utf8(page.Group), control);
    binder.SaveValue(Utf8(page.Group));
    if (image == 6)
        StoreMultiActions();
    return true;
}

void frmOption::cmdSave_Click()
{
    BusyCursor busy;
    if (!StorePage())
        return;
    if (detailSet_)
        detailSet_->Clear();
    detailSet_ = work_->Clone();
    try {
        DataSaveLoadClass file;
        file.SetData(detailSet_);
        file.Save(settingsPath_, QStringLiteral("DetailSet"));
    } catch (const AppError& e) {
        // The new settings are in force all the same; only the file is behind.
        busy.Reset();
        CommonLibClass::ErrMsgBox(e.Message());
    }
    commandList_.RefDetailSet(detailSet_);
    try {
        commandList_.CreateCommandList();
        action_.LoadAction();
    } catch (const AppError& e) {
        // A group of a hand-edited file that lacks its list, on a page never shown here.
        busy.Reset();
        CommonLibClass::ErrMsgBox(e.Message());
    }
    busy.Reset();
    accept();
}

void frmOption::cmdCancel_Click() { reject(); }

// The bar has its place only once the dialog is laid out for showing.
void frmOption::showEvent(QShowEvent* vEvent)
{
    QDialog::showEvent(vEvent);
    UpdateMinimumSize();
}

void frmOption::UpdateMinimumSize()
{
    // Before the first showing the bar stands nowhere yet; the tree will get its planned width.
    const int treePixels = isVisible() ? ctlSplitter1_->FirstSize() : kTreeWidthPixels;
    const double tree = clsSizing::TwipsOfPixels(this, treePixels);
    clsSizing::SetMinimumTwips(this, tree + kPagesMinWidthTwips, kPagesMinHeightTwips);
}
