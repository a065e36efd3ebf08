#pragma once
// The one error type of the program: a number and a text, as the user reads them in a message
// box ("number : description"). Header-only, because the structured data store, which stands on
// nothing, raises it too.

#include <QString>
#include <exception>

class AppError : public std::exception {
public:
    // The plain failures every part shares; their texts are the ones a Japanese Windows shows.
    enum : int {
        InvalidArgument = 5,
        Overflow = 6,
        SubscriptOutOfRange = 9,
        TypeMismatch = 13,
        DiskFull = 61,
        PermissionDenied = 70,
        PathFileAccess = 75,
        PathNotFound = 76,
        ObjectNotSet = 91,
        DuplicateKey = 457,
        DataStore = 6000,
        Document = 6300,
        FileSystem = 6800,
        Database = 7000,
    };

    AppError(int vNumber, QString vDescription)
        : number_(vNumber), description_(std::move(vDescription)), what_(description_.toUtf8()) {}

    // A plain failure with the standard text of its number.
    explicit AppError(int vNumber) : AppError(vNumber, StandardText(vNumber)) {}

    int Number() const noexcept { return number_; }
    const QString& Description() const noexcept { return description_; }
    const char* what() const noexcept override { return what_.constData(); }

    // "number : description", the one form in which an action's failure reaches the user.
    QString Message() const { return QString::number(number_) + QStringLiteral(" : ") + description_; }

    static QString StandardText(int vNumber)
    {
        switch (vNumber) {
        case InvalidArgument: return QStringLiteral("プロシージャの呼び出し、または引数が不正です。");
        case Overflow: return QStringLiteral("オーバーフローしました。");
        case SubscriptOutOfRange: return QStringLiteral("インデックスが有効範囲にありません。");
        case TypeMismatch: return QStringLiteral("型が一致しません。");
        case DiskFull: return QStringLiteral("ディスクの空き容量が不足しています。");
        case PermissionDenied: return QStringLiteral("書き込みできません。");
        case PathFileAccess: return QStringLiteral("パス/ファイル アクセス エラーです。");
        case PathNotFound: return QStringLiteral("パスが見つかりません。");
        case ObjectNotSet: return QStringLiteral("オブジェクト変数または With ブロック変数が設定されていません。");
        case DuplicateKey: return QStringLiteral("このキーは既にこのコレクションの要素に割り当てられています。");
        default: return QStringLiteral("アプリケーション定義またはオブジェクト定義のエラーです。");
        }
    }

private:
    int number_;
    QString description_;
    QByteArray what_;
};
