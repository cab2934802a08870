// The SQL corpus in tests: the shared reader (db/SqlCorpus.h) handed the
// screening table's texts, with a test failure for a missing entry, the
// fixture rows, and binding that expects the dataset to refuse a name the
// text lacks.
#pragma once

#include "SqlCorpus.h"
#include "data/MidasQuery.h"

namespace tarvin::test {
class TestDatabase;
}

namespace tarvin::test::corpus {

using namespace tarvin::corpus;

// The entry with this id; an empty one, and a test failure, when there is none.
const Entry& entry(const QString& id);
// The rows of tests/corpus/fixture.sql, committed, and the corpus's clock.
void loadFixture(TestDatabase& db);
// Binds one parameter with the screen's type ("missing": binding must be
// refused, and is checked to be).
void bind(TMidasQuery& q, const Param& p);

}  // namespace tarvin::test::corpus
