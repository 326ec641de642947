"""The version, which is that of the library."""
__version__ = '2.0.0'
