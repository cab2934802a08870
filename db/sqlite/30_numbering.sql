-- Reference schema: number sequences (SQLite).
--
-- SQLite has no sequences: GET_CDBH, GET_GDFABH, GET_DNBID and GET_JCPH
-- (C++ functions registered on the connection) draw the next number with
-- one "UPDATE z_xlh ... RETURNING" inside the caller's statement, so that
-- the database's write lock makes concurrent callers in several processes
-- draw distinct numbers. A sequence that has reached zdz returns '-1'.
-- Unlike PostgreSQL's sequences, a number drawn in a transaction that is
-- rolled back is drawn again by the next caller.
CREATE TABLE z_xlh (
    xlm     VARCHAR(20) PRIMARY KEY,       -- sequence name
    dqz     INTEGER NOT NULL DEFAULT 0,    -- last number drawn
    zdz     INTEGER NOT NULL DEFAULT 9999999999
);

INSERT INTO z_xlh (xlm, dqz) VALUES ('CDBH', 0);
INSERT INTO z_xlh (xlm, dqz) VALUES ('GDFABH', 0);
INSERT INTO z_xlh (xlm, dqz) VALUES ('DNBID', 0);
INSERT INTO z_xlh (xlm, dqz) VALUES ('JCPH', 0);
