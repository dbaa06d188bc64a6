#pragma once

#include <QAbstractTableModel>
#include <QString>

#include <vector>

/// A fixture that can be added: a profile that there is, or a mode of the library that becomes one.
struct FixtureChoice {
    QString text;  ///< as the list shows it
    QString model; ///< what a fixture of it may be called
    QString from;
    QString profile; ///< null for a mode of the library
    QString file;    ///< of a mode of the library
    QString mode;
    quint64 channels = 0; ///< slots
};

/// The list of the fixtures that can be added, of which only those are rows that have all the words that
/// were typed, in whatever order.
class FixtureChoices : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column : int { Fixture = 0, Channels = 1, From = 2 };

    using QAbstractTableModel::QAbstractTableModel;

    /// Adds choices below the others.
    void append(std::vector<FixtureChoice> choices);
    void setWords(const QString& words);

    /// The choice in a row; null when there is none.
    const FixtureChoice* choice(const QModelIndex& index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    bool matches(std::size_t choice) const;
    void showMatching();

    std::vector<FixtureChoice> choices_;
    std::vector<QString> searched_; ///< of each choice, all of it, in lower case
    std::vector<std::size_t> rows_; ///< the choices that are shown
    QStringList words_;             ///< in lower case
};
