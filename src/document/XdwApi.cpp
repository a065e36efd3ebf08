#include "document/XdwApi.h"

#include "document/DocumentEngine.h"
#include "support/CommonLibClass.h"

#include <QCoreApplication>

#include <utility>

namespace {

// What a machine without the runtime answers: nothing opens, nothing is known.
class AbsentEngine final : public DocumentEngine {
public:
    void OpenDocument(const QString&, qint16) override { Fail(XdwResult::NotInstalled); }
    qint32 ReadDocumentHandle() override { return Absent(0); }
    void SelectDocumentHandle(qint32) override { Fail(XdwResult::NotInstalled); }
    void CloseSelectedDocument() override { Fail(XdwResult::NotInstalled); }
    void GetDocumentInformation() override { Fail(XdwResult::NotInstalled); }
    void GetPageInformation(qint32) override { Fail(XdwResult::NotInstalled); }
    void GetPageInformationEx(qint32) override { Fail(XdwResult::NotInstalled); }
    QString GetInformation(qint16) override { return Absent(QString()); }
    qint32 ConvertPageToImageHandle(qint32, qint32, qint32) override { return Absent(0); }
    void GlobalFree(qint32) override { Fail(XdwResult::NotInstalled); }
    void Finalize() override { Fail(XdwResult::NotInstalled); }

protected:
    void Unavailable(const QString&) override { Fail(XdwResult::NotInstalled); }

private:
    template <class T>
    T Absent(T vAnswer)
    {
        Fail(XdwResult::NotInstalled);
        return vAnswer;
    }
};

std::shared_ptr<DocumentEngine>& Installed()
{
    static std::shared_ptr<DocumentEngine> engine;
    return engine;
}

XdwRetryPause& Pause()
{
    static XdwRetryPause pause;
    return pause;
}

} // namespace

QString GetXdwErrorText(qint32 vResult)
{
    switch (static_cast<quint32>(vResult)) {
    case 0x8000FFFF: return QStringLiteral("その他のエラーです。");
    case 0x80001156: return QStringLiteral("アプリケーションの起動ができませんでした。");
    case 0x80040001:
        return QStringLiteral("DocuWorksがインストールされていません。または、正しくインストールされていません。");
    case 0x80040002: return QStringLiteral("問い合わせた情報(インストール情報、属性値など)は存在しません。");
    case 0x80040003:
        return QStringLiteral("認証に失敗したため文書を開くことができません、または認可されていない操作を行いました。");
    case 0x80040004:
        return QStringLiteral("無効な操作(回転できないページに対して回転、白黒イメージでないページに対してノイズ除去等)を行いました。");
    case 0x80040005: return QStringLiteral("処理がキャンセルされました。");
    case 0x80070002: return QStringLiteral("入力に指定したパスのファイルが見つかりません。");
    case 0x80070005: return QStringLiteral("アクセス権がないため、ファイルオープンやファイル生成に失敗しました。");
    case 0x8007000B: return QStringLiteral("指定されたDocuWorks文書ファイルが正しいフォーマットではありません。");
    case 0x8007000E: return QStringLiteral("メモリーの獲得に失敗しました。");
    case 0x8007001D: return QStringLiteral("書き込み中にエラーが発生しました。");
    case 0x80070020: return QStringLiteral("ファイルが使用中です。");
    case 0x80070027: return QStringLiteral("ディスク不足です。");
    case 0x80070050: return QStringLiteral("出力に指定したパスのファイルがすでに存在しています。");
    case 0x80070057: return QStringLiteral("関数の引数に仕様外の値を渡しました。");
    case 0x8007007A: return QStringLiteral("バッファ領域が不足しているため、情報を取得できません。");
    case 0x8007007B: return QStringLiteral("パス名の指定が正しくありません。");
    case 0x800E0004: return QStringLiteral("DocuWorksファイルのバージョンが新しいため、開くことができません。");
    case 0x800E0005:
        return QStringLiteral("ネットワーク関連のエラーです(ネットワークパスが間違っている、ログオンに失敗したなど)。");
    default: return QStringLiteral("予期しないエラーが発生しました。");
    }
}

std::shared_ptr<DocumentEngine> XdwApiObject()
{
    // Made on first use rather than at start-up: a process that never touches a document
    // never needs it.
    static const std::shared_ptr<DocumentEngine> absent = std::make_shared<AbsentEngine>();
    const std::shared_ptr<DocumentEngine>& installed = Installed();
    return installed ? installed : absent;
}

void SetXdwApiObject(std::shared_ptr<DocumentEngine> vEngine)
{
    Installed() = std::move(vEngine);
}

void XdwRetryWait(qint32 vMiliSec)
{
    if (const XdwRetryPause& pause = Pause()) {
        pause(vMiliSec);
        return;
    }
    QCoreApplication::processEvents();
    CommonLibClass::SleepWait(vMiliSec);
}

XdwRetryPause SetXdwRetryPause(XdwRetryPause vPause)
{
    return std::exchange(Pause(), std::move(vPause));
}
