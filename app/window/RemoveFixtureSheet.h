#pragma once

#include <QModelIndexList>

#include <functional>
#include <vector>

class QDialog;
class QWidget;

/// Asks on `window` whether the fixtures in these rows of the fixture table shall go, and names them. A yes
/// hands over the rows in which they then stand.
QDialog* openRemoveFixtureSheet(QWidget& window, const QModelIndexList& rows,
                                const std::function<void(std::vector<std::size_t>)>& accepted);
