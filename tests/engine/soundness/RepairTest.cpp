#include "engine/Repair.h"
#include "tests/engine/soundness/SampleDatabase.h"
#include <gtest/gtest.h>
#include <iostream>
using namespace velmora; using namespace velmora::engine; using namespace velmora::engine::test;
TEST(Scratch, One) {
    SampleFolder f; MakeSample(f.Path(), 5000);
    EXPECT_EQ(OpeningResult(f.Path()),0);
    const Rows before=ReadRows(f.Path());
    auto leaf=PagesOf(f.Path(),"Reservation","leaf"); auto inter=PagesOf(f.Path(),"Reservation","internal");
    std::cout<<leaf.size()<<" "<<inter.size()<<"\n";
    OverwritePage(f.Path(), leaf[leaf.size()/2]);
    OverwritePage(f.Path(), leaf[3]);
    OverwritePage(f.Path(), inter[0]);
    OverwritePage(f.Path(), PagesOf(f.Path(),"Asset/Person","leaf")[2]);
    OverwritePage(f.Path(), PagesOf(f.Path(),"Person","leaf")[2]);
    std::cout<<OpeningResult(f.Path())<<"\n";
    auto r=RepairDatabase(f.Path(), ShippedSchema(), *MakeDateTime({2026,3,7,14,15,9}));
    std::cout<<r.ToText().toStdString()<<f.Names().join(u' ').toStdString()<<"\n";
    EXPECT_EQ(OpeningResult(f.Path()),0);
    const Rows after=ReadRows(f.Path());
    std::cout<<CountRows(before)<<" "<<CountRows(after)<<"\n";
}
