PRAGMA application_id=1364610628;
PRAGMA user_version=1;
CREATE TABLE jet_info(name TEXT PRIMARY KEY, value TEXT);
INSERT INTO jet_info VALUES('locale',';LANGID=0x0409;CP=1252;COUNTRY=0');
CREATE TABLE jet_tables(id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL UNIQUE COLLATE JET, last_number INTEGER NOT NULL DEFAULT 0);
CREATE TABLE jet_fields(table_id INTEGER, position INTEGER, name TEXT NOT NULL,type INTEGER NOT NULL, size INTEGER NOT NULL, attributes INTEGER NOT NULL,zero_length INTEGER NOT NULL, default_value TEXT, PRIMARY KEY(table_id, position));
CREATE TABLE jet_indexes(table_id INTEGER, position INTEGER, name TEXT NOT NULL, is_primary INTEGER NOT NULL, is_unique INTEGER NOT NULL,PRIMARY KEY(table_id, position));
CREATE TABLE jet_index_fields(table_id INTEGER, index_position INTEGER, position INTEGER, field_position INTEGER NOT NULL, PRIMARY KEY(table_id, index_position, position));
