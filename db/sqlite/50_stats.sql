-- Reference schema: planner statistics (SQLite).
--
-- SQLite chooses its join order from sqlite_stat1. Without it, a screening
-- text filtered by unit and month may start from the month's ledger rows of
-- every unit instead of the unit's customers. These rows describe a utility
-- of about a million customers with two years of ledger, so that a fresh or
-- small database is planned as a full one is; ANALYZE over real data
-- replaces them (the demo generator runs it when it has written its data).
ANALYZE;
DELETE FROM sqlite_stat1;
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_khda', 'sqlite_autoindex_y_khda_1', '1000000 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_khda', 'y_khda_dw', '1000000 20000');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_khda', 'y_khda_hm', '1000000 2');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_khda', 'y_khda_yddz', '1000000 2');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_khda', 'y_khda_pym', '1000000 5');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_khda', 'y_khda_cbcbh', '1000000 200');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_khda', 'y_khda_yhh', '1000000 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_khda', 'y_khda_cdbh', '1000000 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_gddy', 'sqlite_autoindex_y_gddy_1', '1100000 2 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_gddy', 'y_gddy_zg', '1000000 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_gddy', 'y_gddy_xlbh', '1100000 500');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_gddy', 'y_gddy_byqbh', '1100000 100');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('b_dltzxx', 'sqlite_autoindex_b_dltzxx_1', '26000000 26 2 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('b_dltzxx', 'b_dltzxx_ny', '26000000 1100000 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('b_dltzxx', 'b_dltzxx_ll', '1300000 50000 20');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('b_dltzxx', 'b_dltzxx_fgb', '4000000 150000 2');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('c_dfxx', 'sqlite_autoindex_c_dfxx_1', '26000000 26 1 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('c_dfxx', 'c_dfxx_ny', '26000000 1100000 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('c_dfxx', 'c_dfxx_tf', '20000 1000 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_jfxx', 'sqlite_autoindex_y_jfxx_1', '1100000 2 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_jfxx', 'y_jfxx_djm', '1100000 20000');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_jfxx', 'y_jfxx_dldb', '10000 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_htxx', 'sqlite_autoindex_y_htxx_1', '1000000 1 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_htxx', 'y_htxx_yxrq', '1000000 3');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_yxdnb', 'sqlite_autoindex_y_yxdnb_1', '1200000 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_yxdnb', 'y_yxdnb_hh', '1200000 2 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('y_yxdnb', 'y_yxdnb_dnbcch', '1200000 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('a_h_khsqxx', 'sqlite_autoindex_a_h_khsqxx_1', '2000000 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('a_h_khsqxx', 'a_h_khsqxx_hh', '2000000 2 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('a_h_khsqxx', 'a_h_khsqxx_sqrq', '2000000 2 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('a_h_ykkzb', 'sqlite_autoindex_a_h_ykkzb_1', '2000000 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('e_zbdygl', 'sqlite_autoindex_e_zbdygl_1', '10000 2 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('z_dqgw', 'sqlite_autoindex_z_dqgw_1', '50000 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('z_dqgw', 'z_dqgw_dqywx', '50000 2000 50');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('z_dqgw', 'z_dqgw_khbh', '50000 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('e_jcgzjl', 'sqlite_autoindex_e_jcgzjl_1', '200000 1');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('e_jcgzjl', 'e_jcgzjl_jcph', '200000 20');
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('e_jcgzjl', 'e_jcgzjl_hh', '200000 2');
