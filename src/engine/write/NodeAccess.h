#pragma once
// Reading and changing the attributes of one record of the editable tree, for the annotation
// code: numbered attributes, named ones through the record's own declarations, and their values
// as numbers or texts. Kept here as free functions so that annotations depend on the tree's
// data only.

#include "engine/write/Tree.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

namespace xdw::nodes {

const NodeAttribute* Find(const Node& vNode, quint32 vNumber);
void Set(Node& vNode, quint32 vNumber, const QByteArray& vValue);
void Remove(Node& vNode, quint32 vNumber);

const NodeAttribute* Named(const Node& vNode, QStringView vName);
// Sets a named attribute, declaring it with the next free number from 2001 when new.
void SetNamed(Node& vNode, const QString& vName, qint64 vType, const QByteArray& vValue);
bool RemoveNamed(Node& vNode, QStringView vName);

// A named attribute's number list, its first number, or its text (narrow, or wide for names
// ending in "(w"); nothing when absent or unreadable.
std::optional<std::vector<qint64>> NamedNumbers(const Node& vNode, QStringView vName);
std::optional<qint64> NamedNumber(const Node& vNode, QStringView vName);
std::optional<QString> NamedText(const Node& vNode, QStringView vName);
std::optional<std::vector<qint64>> Numbers(const Node& vNode, quint32 vNumber);

} // namespace xdw::nodes
