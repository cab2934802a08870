-- Reference schema: the screening views over the energy ledger (SQLite).
--
-- PostgreSQL reads the same figures from the month figures kept beside the
-- ledger (db/postgres/25_ledger_views.sql); SQLite reads the ledger itself.

-- Consecutive zero readings: per customer and ledger month, lxldys is the
-- number of ledger months up to and including this one, back to the last
-- month with energy, in which the customer's total energy (peak + flat +
-- valley, all billing points) was zero; 0 for a month with energy.
-- One row per customer and month: the month's row of its lowest billing
-- point stands for the month (no aggregate, so the filters of the texts
-- reach the indexes of y_khda and b_dltzxx).
CREATE VIEW v_lxld AS
SELECT a.*,
       m.ny AS ny,
       CAST((SELECT COUNT(DISTINCT z.ny)
               FROM b_dltzxx z
              WHERE z.hh = m.hh
                AND z.ny <= m.ny
                AND z.ny > COALESCE((SELECT MAX(n.ny)
                                       FROM b_dltzxx n
                                      WHERE n.hh = m.hh
                                        AND n.ny <= m.ny
                                        AND COALESCE(n.jffdl, 0) + COALESCE(n.jfpdl, 0) + COALESCE(n.jfgdl, 0) <> 0),
                                    '')) AS NUMERIC) AS lxldys
  FROM v_yckhda a
  JOIN b_dltzxx m ON m.hh = a.hh
 WHERE m.jfdbh = (SELECT MIN(x.jfdbh) FROM b_dltzxx x WHERE x.hh = m.hh AND x.ny = m.ny);

-- Swing against the same month of the previous year: bdl is
-- abs((this year - last year) / last year * 100), rounded to 2 places, over
-- the customer's total energy of the two months; NULL when last year's
-- month is missing or zero. One row per customer and month, as v_lxld.
CREATE VIEW v_qntqdlbd AS
SELECT a.*,
       m.ny AS ny,
       CAST((SELECT ROUND(ABS((SUM(CASE WHEN c.ny = m.ny THEN COALESCE(c.jffdl, 0) + COALESCE(c.jfpdl, 0) + COALESCE(c.jfgdl, 0) END)
                               - SUM(CASE WHEN c.ny <> m.ny THEN COALESCE(c.jffdl, 0) + COALESCE(c.jfpdl, 0) + COALESCE(c.jfgdl, 0) END))
                              * 100.0
                              / NULLIF(SUM(CASE WHEN c.ny <> m.ny THEN COALESCE(c.jffdl, 0) + COALESCE(c.jfpdl, 0) + COALESCE(c.jfgdl, 0) END), 0)), 2)
               FROM b_dltzxx c
              WHERE c.hh = m.hh
                AND c.ny IN (m.ny, (CAST(SUBSTR(m.ny, 1, 4) AS INTEGER) - 1) || SUBSTR(m.ny, 5, 2))) AS NUMERIC) AS bdl
  FROM v_yckhda a
  JOIN b_dltzxx m ON m.hh = a.hh
 WHERE m.jfdbh = (SELECT MIN(x.jfdbh) FROM b_dltzxx x WHERE x.hh = m.hh AND x.ny = m.ny);
