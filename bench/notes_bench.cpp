// The notes window on a reservation with 5,000 notes: its opening, and one page of scrolling beside a bare table view
// on rows that are in memory already.
#include "base/windows/Look.h"
#include "bench/Measure.h"
#include "notes/windows/BoundGrid.h"
#include "notes/windows/frmNotes.h"
#include "tests/notes/NoteSite.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <cstdio>
#include <ctime>

using namespace velmora;

namespace {

constexpr int noteCount = 5000;

class NoDelivery : public print::DocumentSink {
    void SendMail(const QByteArray&) override {}
    bool SaveFile(const QByteArray&, print::ReportFileKind) override { return true; }
};

void GiveNotes(engine::Database& database) {
    engine::Transaction together(database);
    const auto notes = database.OpenRecordset(u"Select * from [Note] where ID = 0", engine::RecordsetKind::Updatable);
    for (int i = 0; i < noteCount; ++i) {
        notes->AddNew();
        notes->Set("Reservation", Value(8));
        notes->Set("Name", Value(u"Note %1"_s.arg(i)));
        notes->Set("NoteCategory", Value(u"Catering"_s));
        notes->Set("Note", Value(u"Coffee for %1 persons\nbeside the door of the large room"_s.arg(i)));
        notes->Set("Cost", Value(i * 0.25));
        notes->Update();
    }
    together.Commit();
}

// The same texts without a database behind them.
class BareModel : public QAbstractTableModel {
public:
    int rowCount(const QModelIndex&) const override { return noteCount; }
    int columnCount(const QModelIndex&) const override { return 10; }
    QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole ? QVariant(texts_[static_cast<size_t>(index.column())]) : QVariant();
    }

private:
    const std::vector<QString> texts_{u"5001"_s,   u"8"_s,     u"Note 5000"_s, u"Catering"_s, u"Coffee for 5000"_s,
                                      u"$12.00"_s, u"False"_s, u"False"_s,     QString(),     QString()};
};

void WaitForScreen(const QWidget& window) {
    while (!window.windowHandle()->isExposed()) {
        QApplication::processEvents();
    }
    QApplication::processEvents();
}

// From top to bottom, a page at a time.
std::vector<double> Scroll(QTableView& view) {
    std::vector<double> pages;
    QScrollBar& bar = *view.verticalScrollBar();
    bar.setValue(0);
    while (bar.value() < bar.maximum()) {
        pages.push_back(bench::Milliseconds([&] {
            bar.setValue(bar.value() + bar.pageStep());
            view.viewport()->repaint();
            view.verticalHeader()->viewport()->repaint();
        }));
    }
    return pages;
}

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    ApplyLook(application, Shade::Light);
    fakes::TestProgram fakes;
    const NoteSite site;
    GiveNotes(*site.desk);
    const Services& services = fakes.program.services();
    NoDelivery delivery;
    print::PrintJob job({services, delivery, {}});
    const NotesContext context{fakes.program, *site.desk, job};

    std::vector<double> openings;
    std::vector<double> pages;
    QSize size;
    for (int run = 0; run < 5; ++run) {
        frmNotes window(context, 8, {});
        const std::clock_t start = std::clock();
        QTimer::singleShot(0, &window, [&] {
            WaitForScreen(window);
            QTableView& view = window.findChild<BoundGrid*>()->View();
            view.viewport()->repaint();
            openings.push_back(1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
            size = view.size();
            const auto scrolled = Scroll(view);
            pages.insert(pages.end(), scrolled.begin(), scrolled.end());
            window.reject();
        });
        window.ShowModal();
    }

    BareModel model;
    QTableView bare;
    bare.setModel(&model);
    bare.verticalHeader()->setDefaultSectionSize(bare.fontMetrics().height() + spacing::normal + spacing::small);
    bare.resize(size);
    bare.show();
    WaitForScreen(bare);
    const double barePage = bench::Median(Scroll(bare));
    const double page = bench::Median(pages);
    const double slowest = *std::max_element(pages.begin(), pages.end());
    std::printf("5,000 notes on the screen  %.1f ms (limit 60)\n", bench::Median(openings));
    std::printf("scrolling by a page        %.2f ms, slowest %.2f (limit 16), %.2f of a bare view's %.2f\n", page,
                slowest, page / barePage, barePage);
    return bench::Median(openings) <= 60 && slowest <= 16 ? 0 : 1;
}
